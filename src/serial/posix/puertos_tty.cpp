#include "puertos_tty.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "ocupantes_tty.h"
#include "platform/descriptor.h"

namespace morvane {

namespace fs = std::filesystem;

namespace {

fs::path dispositivo_propio(int numero) {
  if (numero >= 1 && numero <= 4) return "/dev/ttyS" + std::to_string(numero - 1);
  if (numero >= 5 && numero <= 8) return "/dev/ttyUSB" + std::to_string(numero - 5);
  if (numero == 9) return "/dev/ttyACM0";
  return {};
}

bool hay_enlace(const fs::path& enlace) {
  std::error_code error;
  return fs::exists(fs::symlink_status(enlace, error));
}

std::string explicar_permiso(const fs::path& ruta) {
  struct stat que {};
  constexpr mode_t del_grupo = S_IRGRP | S_IWGRP;
  if (::stat(ruta.c_str(), &que) != 0) return "sin permiso";
  if (que.st_gid == 0 || (que.st_mode & del_grupo) != del_grupo) {
    const passwd* dueno = ::getpwuid(que.st_uid);
    return "sin permiso: es solo del usuario " +
           (dueno != nullptr ? std::string(dueno->pw_name) : std::to_string(que.st_uid));
  }
  const group* grupo = ::getgrgid(que.st_gid);
  const std::string nombre = grupo != nullptr ? grupo->gr_name : std::to_string(que.st_gid);
  return "sin permiso: ejecute «sudo usermod -aG " + nombre + " $USER» y vuelva a iniciar la sesión";
}

}  // namespace

fs::path enlace_de(const fs::path& directorio, int numero) {
  return directorio / "puertos" / ("COM" + std::to_string(numero));
}

fs::path destino_puerto(const fs::path& directorio, int numero) {
  if (numero < 0 || numero > 9) return {};
  std::error_code error;
  const fs::path enlace = enlace_de(directorio, numero);
  const fs::path ruta = hay_enlace(enlace) ? enlace : dispositivo_propio(numero);
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
  if (::flock(fd, LOCK_EX | LOCK_NB) == 0) return ::ioctl(fd, TIOCEXCL) == 0;
  if (errno == EWOULDBLOCK) errno = EBUSY;
  return false;
}

void dejar_exclusiva(int fd) {
  (void)::ioctl(fd, TIOCNXCL);
}

std::string explicar_falta(const fs::path& directorio, int numero) {
  const fs::path enlace = enlace_de(directorio, numero);
  const bool enlazado = hay_enlace(enlace);
  const fs::path ruta = enlazado ? enlace : dispositivo_propio(numero);
  if (ruta.empty()) return "no existe el enlace " + enlace.native();
  std::error_code error;
  const fs::path final = fs::canonical(ruta, error);
  if (!error) return final.native() + " no es un dispositivo serie";
  if (error == std::errc::permission_denied) return "sin permiso para llegar a lo que hay tras " + ruta.native();
  if (!enlazado) return "no existen ni " + ruta.native() + " ni el enlace " + enlace.native();
  return "el enlace " + enlace.native() + " lleva a " + fs::read_symlink(enlace, error).native() + ", que no existe";
}

std::string explicar_apertura(const fs::path& ruta, int error) {
  switch (error) {
    case EBUSY: {
      const std::string quienes = ocupantes(ruta);
      return "ocupado por " + (quienes.empty() ? "otro programa" : quienes);
    }
    case EACCES:
    case EPERM:
      return explicar_permiso(ruta);
    case ENOTTY:
    case EINVAL:
      return "no es un dispositivo serie";
    case EIO:
    case ENXIO:
    case ENODEV:
      return "no hay ningún aparato detrás de este dispositivo";
    default:
      return std::strerror(error);
  }
}

}  // namespace morvane
