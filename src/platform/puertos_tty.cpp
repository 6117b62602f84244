#include "puertos_tty.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "descriptor.h"

namespace morvane {

namespace fs = std::filesystem;

namespace {

fs::path dispositivo_propio(int numero) {
  if (numero >= 1 && numero <= 4) return "/dev/ttyS" + std::to_string(numero - 1);
  if (numero >= 5 && numero <= 8) return "/dev/ttyUSB" + std::to_string(numero - 5);
  if (numero == 9) return "/dev/ttyACM0";
  return {};
}

std::string grupo_de(const fs::path& ruta) {
  struct stat que {};
  if (::stat(ruta.c_str(), &que) != 0) return {};
  const group* grupo = ::getgrgid(que.st_gid);
  return grupo != nullptr ? grupo->gr_name : std::to_string(que.st_gid);
}

}  // namespace

fs::path destino_puerto(const fs::path& directorio, int numero) {
  if (numero < 0 || numero > 9) return {};
  fs::path ruta = directorio / "puertos" / ("COM" + std::to_string(numero));
  std::error_code error;
  if (!fs::exists(fs::symlink_status(ruta, error))) ruta = dispositivo_propio(numero);
  if (ruta.empty()) return {};
  fs::path final = fs::canonical(ruta, error);
  return error ? fs::path{} : final;
}

bool es_dispositivo(const fs::path& ruta) {
  struct stat que {};
  return ::stat(ruta.c_str(), &que) == 0 && S_ISCHR(que.st_mode);
}

int abrir_dispositivo(const fs::path& ruta) {
  if (!es_dispositivo(ruta)) {
    errno = ENOTTY;
    return -1;
  }
  descriptor fd(::open(ruta.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (!fd.abierto()) return -1;
  if (::isatty(fd.numero()) == 1) return fd.soltar();
  const int error = errno;
  fd.cerrar();
  errno = error;
  return -1;
}

bool tomar_en_exclusiva(int fd) {
  // Each keeps out what the other lets in: the lock another opening by root, TIOCEXCL a program that asks for no lock.
  return ::flock(fd, LOCK_EX | LOCK_NB) == 0 && ::ioctl(fd, TIOCEXCL) == 0;
}

void dejar_exclusiva(int fd) {
  (void)::ioctl(fd, TIOCNXCL);
}

std::string explicar_apertura(const fs::path& ruta, int error) {
  switch (error) {
    case EBUSY:
      return "busy: another program uses it";
    case EACCES:
    case EPERM:
      return "no permission: join the group \"" + grupo_de(ruta) + "\" and log in again";
    case ENOTTY:
    case EINVAL:
      return "not a serial device";
    case EIO:
    case ENXIO:
    case ENODEV:
      return "no hardware behind this device";
    default:
      return std::strerror(error);
  }
}

}  // namespace morvane
