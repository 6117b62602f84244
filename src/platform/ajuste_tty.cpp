#include "ajuste_tty.h"

#include <asm/termbits.h>
#include <linux/serial.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <cstdlib>

#include "puertos_tty.h"

// The kernel's own structure instead of <termios.h>: only it has a field for the speed in figures.
namespace morvane {

namespace {

constexpr tcflag_t formato = CSIZE | PARENB | PARODD | CMSPAR | CSTOPB;
/// Part of the speed by which a divisor may miss it before the far end misreads characters.
constexpr int tolerancia = 30;

tcflag_t banderas_datos(int bits) {
  switch (bits) {
    case 5:
      return CS5;
    case 6:
      return CS6;
    case 7:
      return CS7;
    default:
      return CS8;
  }
}

tcflag_t banderas_paridad(char paridad) {
  switch (paridad) {
    case 'e':
      return PARENB;
    case 'o':
      return PARENB | PARODD;
    case 'm':
      return PARENB | PARODD | CMSPAR;
    case 's':
      return PARENB | CMSPAR;
    default:
      return 0;
  }
}

tcflag_t banderas_formato(const parametros_linea& linea) {
  const tcflag_t parada = linea.medios_bits_parada > 2 ? CSTOPB : 0;
  return banderas_datos(linea.bits_datos) | banderas_paridad(linea.paridad) | parada;
}

void poner_cruda(termios2& t, const parametros_linea& linea) {
  t.c_iflag = IGNBRK;
  t.c_oflag = 0;
  t.c_lflag = 0;
  t.c_cflag = CREAD | CLOCAL | BOTHER | banderas_formato(linea);
  t.c_ispeed = t.c_ospeed = static_cast<speed_t>(linea.velocidad);
  // With 0 here a vanished device would read just like a quiet one.
  t.c_cc[VMIN] = 1;
  t.c_cc[VTIME] = 0;
}

/// A pseudo-terminal has no line, and its driver sets the format back to eight bits without parity.
bool sin_formato(int fd) {
  struct stat que {};
  return ::fstat(fd, &que) == 0 && es_pseudoterminal(que);
}

bool tomado(int fd, const parametros_linea& linea) {
  termios2 t{};
  if (::ioctl(fd, TCGETS2, &t) != 0) return false;
  const int diferencia = std::abs(static_cast<int>(t.c_ospeed) - linea.velocidad);
  if (diferencia > linea.velocidad / tolerancia) return false;
  return sin_formato(fd) || (t.c_cflag & formato) == banderas_formato(linea);
}

}  // namespace

bool ajustar_tty(int fd, const parametros_linea& linea) {
  termios2 t{};
  if (::ioctl(fd, TCGETS2, &t) != 0) return false;
  poner_cruda(t, linea);
  // A driver that cannot do something does the rest and reports success: see what it made of it.
  return ::ioctl(fd, TCSETS2, &t) == 0 && tomado(fd, linea);
}

void pedir_latencia_baja(int fd) {
  serial_struct datos{};
  if (::ioctl(fd, TIOCGSERIAL, &datos) != 0 || (datos.flags & ASYNC_LOW_LATENCY) != 0) return;
  datos.flags |= ASYNC_LOW_LATENCY;
  (void)::ioctl(fd, TIOCSSERIAL, &datos);
}

}  // namespace morvane
