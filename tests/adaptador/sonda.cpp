// A guest at a real driver's port, as the transport makes it. Prints one line for each thing that it sees.
//
//   sonda ajustes PUERTO PARAMETROS    opens with "57600n81" or the like, tells what the driver makes of it, closes,
//                                      tells what it finds afterwards
//   sonda tener PUERTO MS              opens, says so, and waits for the device to vanish, MS milliseconds at most
#include <asm/termbits.h>
#include <fcntl.h>
#include <linux/serial.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "frases/frases.h"
#include "platform/descriptor.h"
#include "serial/transporte_tty.h"

namespace {

using namespace morvane;

void decir(const std::string& que) {
  std::puts(que.c_str());
  std::fflush(stdout);
}

/// Speed, bits, parity, stop bits, whether closing hangs up, the modem lines that are up, low latency.
std::string lo_que_dice(int fd) {
  termios2 t{};
  if (::ioctl(fd, TCGETS2, &t) != 0) return "sin respuesta";
  const bool par = (t.c_cflag & PARENB) != 0, impar = (t.c_cflag & PARODD) != 0, fija = (t.c_cflag & CMSPAR) != 0;
  const char* paridad = !par ? "n" : fija ? (impar ? "m" : "s") : (impar ? "o" : "e");
  int lineas = 0;
  serial_struct s{};
  const bool sabe_lineas = ::ioctl(fd, TIOCMGET, &lineas) == 0, sabe_serie = ::ioctl(fd, TIOCGSERIAL, &s) == 0;
  std::string texto = std::to_string(t.c_ospeed) + paridad + ((t.c_cflag & CSIZE) == CS7 ? "7" : "8");
  texto += (t.c_cflag & CSTOPB) != 0 ? "2" : "1";
  texto += (t.c_cflag & HUPCL) != 0 ? " hupcl" : " -hupcl";
  texto += !sabe_lineas ? " ?lineas"
                        : std::string((lineas & TIOCM_DTR) != 0 ? " dtr" : " -dtr") +
                              ((lineas & TIOCM_RTS) != 0 ? " rts" : " -rts");
  return texto + (!sabe_serie ? " ?latencia" : (s.flags & ASYNC_LOW_LATENCY) != 0 ? " latencia" : " -latencia");
}

std::string como_otro(const std::string& puerto) {
  const descriptor fd(::open(puerto.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  return fd.abierto() ? lo_que_dice(fd.numero()) : "cerrado";
}

bool abrir(transporte_tty& t, const std::string& puerto, const parametros_linea& linea) {
  if (t.abrir_ruta(puerto, linea)) return true;
  decir("no: " + frase(*t.causa()));
  return false;
}

int ajustes(const std::string& puerto, const std::string& parametros) {
  const auto linea = leer_parametros(parametros);
  if (!linea) return 2;
  decir("antes " + como_otro(puerto));
  transporte_tty t("/");
  if (!abrir(t, puerto, *linea)) return 1;
  decir("abierto " + lo_que_dice(t.descriptor_abierto()));
  t.cerrar();
  decir("despues " + como_otro(puerto));
  return 0;
}

int tener(const std::string& puerto, int ms) {
  transporte_tty t("/");
  if (!abrir(t, puerto, {})) return 1;
  decir("abierto");
  const auto limite = std::chrono::steady_clock::now() + std::chrono::milliseconds{ms};
  std::array<char, 64> algo{};
  while (!t.perdido() && std::chrono::steady_clock::now() < limite) {
    pollfd uno{.fd = t.descriptor_abierto(), .events = POLLIN, .revents = 0};
    (void)::poll(&uno, 1, 100);
    (void)t.leer(algo);
  }
  const auto cierre = std::chrono::steady_clock::now();
  const bool perdido = t.perdido();
  t.cerrar();
  const auto gastado = std::chrono::steady_clock::now() - cierre;
  decir(perdido ? "perdido" : "sigue");
  decir("cierre " + std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(gastado).count()));
  return perdido ? 0 : 3;
}

}  // namespace

int main(int cuantos, char** palabras) {
  const std::string que = cuantos == 4 ? palabras[1] : "";
  if (que == "ajustes") return ajustes(palabras[2], palabras[3]);
  if (que == "tener") return tener(palabras[2], std::atoi(palabras[3]));
  return 2;
}
