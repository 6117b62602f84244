#include "ajuste_tty.h"

#include <asm/termbits.h>
#include <linux/serial.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <cstdlib>
#include <cstring>
#include <utility>

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

bool tomado(int fd, const termios2& t, const parametros_linea& linea) {
  const int diferencia = std::abs(static_cast<int>(t.c_ospeed) - linea.velocidad);
  if (diferencia > linea.velocidad / tolerancia) return false;
  return sin_formato(fd) || (t.c_cflag & formato) == banderas_formato(linea);
}

/// With an empty queue the driver first sees out what the circuit holds, which would be spoilt by another speed; with a
/// queue that stands still it would wait for ever.
unsigned long modo_de_reponer(int fd) {
  int quedan = 0;
  return ::ioctl(fd, TIOCOUTQ, &quedan) == 0 && quedan == 0 ? TCSETSW2 : TCSETS2;
}

/// True if the driver's low latency was not what is wanted, and is now. Not every driver has that.
bool cambiar_latencia_baja(int fd, bool baja) {
  serial_struct datos{};
  if (::ioctl(fd, TIOCGSERIAL, &datos) != 0 || ((datos.flags & ASYNC_LOW_LATENCY) != 0) == baja) return false;
  datos.flags ^= ASYNC_LOW_LATENCY;
  return ::ioctl(fd, TIOCSSERIAL, &datos) == 0;
}

}  // namespace

struct ajuste_tty::estado {
  /// What stood there, and what the driver made of that which was asked for.
  termios2 antes{}, puesto{};
  bool otra_latencia = false;
};

ajuste_tty::ajuste_tty() = default;
ajuste_tty::~ajuste_tty() = default;

bool ajuste_tty::poner(int fd, const parametros_linea& linea) {
  auto nuevo = std::make_unique<estado>();
  if (::ioctl(fd, TCGETS2, &nuevo->antes) != 0) return false;
  termios2 pedido = nuevo->antes;
  poner_cruda(pedido, linea);
  // With it, closing would drop DTR after all.
  nuevo->antes.c_cflag &= ~static_cast<tcflag_t>(HUPCL);
  // A driver that cannot do something does the rest and reports success: see what it made of it.
  if (::ioctl(fd, TCSETS2, &pedido) != 0 || ::ioctl(fd, TCGETS2, &nuevo->puesto) != 0) return false;
  e_ = std::move(nuevo);
  if (!tomado(fd, e_->puesto, linea)) {
    reponer(fd);
    return false;
  }
  e_->otra_latencia = cambiar_latencia_baja(fd, true);
  return true;
}

void ajuste_tty::reponer(int fd) {
  if (!e_) return;
  termios2 ahora{};
  const bool intacto = ::ioctl(fd, TCGETS2, &ahora) == 0 && std::memcmp(&ahora, &e_->puesto, sizeof ahora) == 0;
  if (intacto) (void)::ioctl(fd, modo_de_reponer(fd), &e_->antes);
  if (e_->otra_latencia) cambiar_latencia_baja(fd, false);
  e_.reset();
}

}  // namespace morvane
