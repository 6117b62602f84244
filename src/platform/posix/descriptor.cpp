#include "platform/descriptor.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace morvane {

namespace {

constexpr mode_t permisos_nuevos = 0666;

int error_de_clase(mode_t modo) {
  if (S_ISREG(modo)) return 0;
  return S_ISDIR(modo) ? EISDIR : ENODEV;
}

}  // namespace

descriptor& descriptor::operator=(descriptor&& otro) noexcept {
  if (this == &otro) return *this;
  cerrar();
  fd_ = otro.soltar();
  return *this;
}

int descriptor::cerrar() {
  if (fd_ < 0) return 0;
  // The descriptor is gone after EINTR too; closing it again could hit somebody else's.
  return ::close(soltar()) == 0 || errno == EINTR ? 0 : errno;
}

apertura abrir_normal(const std::filesystem::path& ruta, int banderas) {
  if (ruta.native().find('\0') != std::string::npos) return {{}, ENOENT};
  struct stat que {};
  if (::stat(ruta.c_str(), &que) == 0) {
    if (const int error = error_de_clase(que.st_mode)) return {{}, error};
  } else if (errno != ENOENT || (banderas & O_CREAT) == 0) {
    return {{}, errno};
  }
  // Without waiting, and looked at once more: the name may lead elsewhere by now.
  descriptor fd(::open(ruta.c_str(), banderas | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, permisos_nuevos));
  if (!fd.abierto() || ::fstat(fd.numero(), &que) != 0) return {{}, errno};
  if (const int error = error_de_clase(que.st_mode)) return {{}, error};
  return {std::move(fd), 0};
}

bool bloquear(int fd) {
  return ::flock(fd, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

int escribir_todo(int fd, std::string_view datos) {
  while (!datos.empty()) {
    const ssize_t hechos = ::write(fd, datos.data(), datos.size());
    if (hechos > 0) {
      datos.remove_prefix(static_cast<std::size_t>(hechos));
    } else if (hechos == 0) {
      return EIO;
    } else if (errno != EINTR) {
      return errno;
    }
  }
  return 0;
}

int sincronizar(int fd) {
  while (::fsync(fd) != 0) {
    if (errno != EINTR) return errno;
  }
  return 0;
}

long leer_bytes(int fd, char* destino, std::size_t cuantos) {
  while (true) {
    const ssize_t hechos = ::read(fd, destino, cuantos);
    if (hechos >= 0 || errno != EINTR) return hechos;
  }
}

}  // namespace morvane
