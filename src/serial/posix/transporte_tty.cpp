#include "serial/transporte_tty.h"

#include <asm/termbits.h>
#include <linux/serial.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <utility>

#include "ajuste_tty.h"
#include "platform/descriptor.h"
#include "puertos_tty.h"

namespace morvane {

namespace {

/// Far above all that can be under way at once; more than this waits only for a far end that reads nothing.
constexpr std::size_t salida_maxima = std::size_t{64} * 1024;
constexpr std::chrono::milliseconds plazo_vaciado{100};
constexpr int pausa_vaciado = 1;

/// Also what the circuit still holds, where the driver can tell: it would go out with the settings of before.
bool salida_vacia(int fd) {
  int quedan = 0;
  if (::ioctl(fd, TIOCOUTQ, &quedan) == 0 && quedan != 0) return false;
  unsigned registro = 0;
  return ::ioctl(fd, TIOCSERGETLSR, &registro) != 0 || (registro & TIOCSER_TEMT) != 0;
}

}  // namespace

transporte_tty::transporte_tty(std::filesystem::path directorio)
    : directorio_(std::move(directorio)), ajuste_(std::make_unique<ajuste_tty>()) {}

transporte_tty::~transporte_tty() {
  cerrar();
}

std::filesystem::path transporte_tty::dispositivo(int numero) const {
  return dispositivo_puerto(directorio_, numero);
}

bool transporte_tty::existe(int numero) {
  causa_.reset();
  return !dispositivo(numero).empty() || falla(causa_de_falta(directorio_, numero));
}

bool transporte_tty::falla(causa_puerto porque) {
  causa_ = std::move(porque);
  if (al_fallar) al_fallar(*causa_);
  return false;
}

bool transporte_tty::abrir(int numero, const parametros_linea& linea) {
  cerrar();
  if (!existe(numero)) return false;
  auto porque = tomar(dispositivo(numero), linea);
  if (!porque) return true;
  porque->puerto = numero;
  return falla(std::move(*porque));
}

bool transporte_tty::abrir_ruta(const std::filesystem::path& ruta, const parametros_linea& linea) {
  cerrar();
  causa_.reset();
  auto porque = causa_de_camino(ruta);
  if (!porque) porque = tomar(std::filesystem::canonical(ruta), linea);
  if (!porque) return true;
  porque->puerto = causa_puerto::sin_numero;
  return falla(std::move(*porque));
}

std::optional<causa_puerto> transporte_tty::tomar(const std::filesystem::path& ruta, const parametros_linea& linea) {
  descriptor fd(abrir_dispositivo(ruta));
  if (!fd.abierto() || !tomar_en_exclusiva(fd.numero())) return causa_de_apertura(ruta, errno);
  if (!ajuste_->poner(fd.numero(), linea)) {
    dejar_exclusiva(fd.numero());
    return causa_puerto{.cual = causa_puerto::clase::parametros, .ruta = ruta, .linea = linea};
  }
  (void)::ioctl(fd.numero(), TCFLSH, TCIOFLUSH);
  fd_ = fd.soltar();
  return std::nullopt;
}

void transporte_tty::escribir(std::string_view datos) {
  if (fd_ < 0 || perdido_ || salida_.size() + datos.size() > salida_maxima) return;
  salida_.append(datos);
  enviar_pendiente();
}

void transporte_tty::enviar_pendiente() {
  while (!salida_.empty()) {
    const ssize_t hechos = ::write(fd_, salida_.data(), salida_.size());
    if (hechos > 0) {
      salida_.erase(0, static_cast<std::size_t>(hechos));
      continue;
    }
    if (hechos < 0 && errno == EINTR) continue;
    if (hechos < 0 && errno != EAGAIN) perdido_ = true;
    break;
  }
  if (perdido_) salida_.clear();
}

std::size_t transporte_tty::leer(std::span<char> destino) {
  if (fd_ < 0 || perdido_) return 0;
  enviar_pendiente();
  if (perdido_ || destino.empty()) return 0;
  const ssize_t hechos = ::read(fd_, destino.data(), destino.size());
  if (hechos > 0) return static_cast<std::size_t>(hechos);
  // No character is EAGAIN; an end of file is a line that was hung up.
  if (hechos == 0 || (errno != EAGAIN && errno != EINTR)) {
    perdido_ = true;
    salida_.clear();
  }
  return 0;
}

void transporte_tty::cerrar() {
  if (fd_ < 0) return;
  const auto limite = std::chrono::steady_clock::now() + plazo_vaciado;
  while (!perdido_ && !(salida_.empty() && salida_vacia(fd_))) {
    if (std::chrono::steady_clock::now() >= limite) {
      descartar_salida();
      break;
    }
    ::poll(nullptr, 0, pausa_vaciado);
    enviar_pendiente();
  }
  ajuste_->reponer(fd_);
  dejar_exclusiva(fd_);
  ::close(std::exchange(fd_, -1));
  salida_.clear();
  perdido_ = false;
}

void transporte_tty::descartar_salida() {
  salida_.clear();
  if (fd_ < 0) return;
  (void)::ioctl(fd_, TCFLSH, TCOFLUSH);
  ajuste_->reponer(fd_);
  // If the program ends now, a device that somebody else holds open too would stay closed to all others for ever. The
  // lock keeps the line until then.
  dejar_exclusiva(fd_);
}

}  // namespace morvane
