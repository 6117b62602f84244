#include "puertos_tty.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>

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

/// False once the program's directory is not where it was: nobody can know then which links it has.
bool sigue(const fs::path& directorio) {
  std::error_code error;
  return directorio.empty() || fs::is_directory(directorio, error);
}

/// What decides where a port leads: its link, or the device that it has of its own; empty if it has neither.
fs::path principio_de(const fs::path& directorio, int numero) {
  if (!sigue(directorio)) return {};
  fs::path enlace = enlace_de(directorio, numero);
  return hay_enlace(enlace) ? enlace : dispositivo_propio(numero);
}

std::chrono::nanoseconds momento(const timespec& t) {
  return std::chrono::seconds(t.tv_sec) + std::chrono::nanoseconds(t.tv_nsec);
}

/// The latest that a link can have been made: some file systems keep whole seconds, others not the last digits.
std::chrono::nanoseconds ultimo_momento(const struct stat& enlace) {
  using namespace std::chrono_literals;
  return momento(enlace.st_mtim) + (enlace.st_mtim.tv_nsec == 0 ? 1s : 10ms);
}

/// No earlier than a terminal came into being. The kernel does not keep that, but it is where these three begin, and
/// each is moved on for a reason of its own: a new mode or owner, what is written, what is read.
std::chrono::nanoseconds primer_momento(const struct stat& terminal) {
  return std::min({momento(terminal.st_ctim), momento(terminal.st_mtim), momento(terminal.st_atim)});
}

/// On the way from `ruta` to a pseudo-terminal the link that names it, if the terminal came into being after it: it was
/// made for another one of that number. Empty if there is none such.
fs::path enlace_pasado(fs::path ruta) {
  constexpr int enlaces_maximos = 40;
  fs::path ultimo;
  struct stat que {
  }, enlace{};
  for (int i = 0; i < enlaces_maximos && ::lstat(ruta.c_str(), &que) == 0 && S_ISLNK(que.st_mode); ++i) {
    enlace = que;
    ultimo = ruta;
    std::error_code error;
    ruta = ruta.parent_path() / fs::read_symlink(ruta, error);
  }
  const bool pasado = !ultimo.empty() && es_pseudoterminal(que) && ultimo_momento(enlace) < primer_momento(que);
  return pasado ? ultimo : fs::path{};
}

bool es_dispositivo(const fs::path& ruta) {
  struct stat que {};
  return ::stat(ruta.c_str(), &que) == 0 && S_ISCHR(que.st_mode);
}

/// Where a path, or the link in its place, leads to no device.
causa_puerto falta_tras(const fs::path& ruta) {
  using clase = causa_puerto::clase;
  std::error_code error;
  const fs::path final = fs::canonical(ruta, error);
  if (const fs::path pasado = enlace_pasado(ruta); !pasado.empty()) {
    return {.cual = clase::enlace_pasado, .ruta = final, .enlace = pasado, .quien = ocupantes(final)};
  }
  if (!error) return {.cual = clase::no_es_dispositivo, .ruta = final};
  if (error == std::errc::permission_denied) return {.cual = clase::camino_cerrado, .ruta = ruta};
  if (hay_enlace(ruta)) return {.cual = clase::enlace_roto, .ruta = fs::read_symlink(ruta, error), .enlace = ruta};
  return {.cual = clase::sin_nada, .ruta = ruta};
}

causa_puerto causa_de_permiso(const fs::path& ruta) {
  using clase = causa_puerto::clase;
  struct stat que {};
  constexpr mode_t del_grupo = S_IRGRP | S_IWGRP;
  if (::stat(ruta.c_str(), &que) != 0) return {.cual = clase::sin_permiso, .ruta = ruta};
  if (que.st_gid == 0 || (que.st_mode & del_grupo) != del_grupo) {
    const passwd* dueno = ::getpwuid(que.st_uid);
    return {.cual = clase::solo_de_usuario,
            .ruta = ruta,
            .quien = dueno != nullptr ? std::string(dueno->pw_name) : std::to_string(que.st_uid)};
  }
  const group* grupo = ::getgrgid(que.st_gid);
  return {.cual = clase::falta_grupo,
          .ruta = ruta,
          .quien = grupo != nullptr ? std::string(grupo->gr_name) : std::to_string(que.st_gid)};
}

}  // namespace

fs::path enlace_de(const fs::path& directorio, int numero) {
  return directorio / "puertos" / ("COM" + std::to_string(numero));
}

fs::path dispositivo_puerto(const fs::path& directorio, int numero) {
  if (numero < 0 || numero > 9) return {};
  const fs::path ruta = principio_de(directorio, numero);
  if (ruta.empty() || !enlace_pasado(ruta).empty()) return {};
  std::error_code error;
  fs::path final = fs::canonical(ruta, error);
  return !error && es_dispositivo(final) ? final : fs::path{};
}

bool es_pseudoterminal(const struct stat& que) {
  constexpr unsigned primero = 136, ultimo = 143;
  return S_ISCHR(que.st_mode) && major(que.st_rdev) >= primero && major(que.st_rdev) <= ultimo;
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

causa_puerto causa_de_falta(const fs::path& directorio, int numero) {
  using clase = causa_puerto::clase;
  const fs::path enlace = enlace_de(directorio, numero), ruta = principio_de(directorio, numero);
  causa_puerto causa;
  if (!sigue(directorio)) {
    causa = {.cual = clase::carpeta_movida, .ruta = directorio};
  } else if (ruta.empty()) {
    causa = {.cual = clase::sin_enlace};
  } else {
    causa = falta_tras(ruta);
  }
  causa.puerto = numero;
  if (causa.enlace.empty()) causa.enlace = enlace;
  return causa;
}

std::optional<causa_puerto> causa_de_camino(const fs::path& ruta) {
  std::error_code error;
  const fs::path final = fs::canonical(ruta, error);
  if (!error && enlace_pasado(ruta).empty() && es_dispositivo(final)) return std::nullopt;
  return falta_tras(ruta);
}

causa_puerto causa_de_apertura(const fs::path& ruta, int error) {
  using clase = causa_puerto::clase;
  switch (error) {
    case EBUSY:
      return {.cual = clase::ocupado, .ruta = ruta, .quien = ocupantes(ruta)};
    case EACCES:
    case EPERM:
      return causa_de_permiso(ruta);
    case ENOTTY:
    case EINVAL:
      return {.cual = clase::no_es_serie, .ruta = ruta};
    case EIO:
    case ENXIO:
    case ENODEV:
      return {.cual = clase::sin_aparato, .ruta = ruta};
    default:
      return {.cual = clase::sistema, .ruta = ruta, .error = error};
  }
}

}  // namespace morvane
