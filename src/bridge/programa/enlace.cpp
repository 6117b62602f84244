#include "enlace.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <time.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <stdexcept>

namespace fs = std::filesystem;

namespace puente {

namespace {

/// A name in the kernel's abstract space: taken by one board at a time, and free again however that board ends. The
/// directory goes by its number, so that two ways of writing a path are one name.
descriptor cerrar_para_otros(const fs::path& ruta) {
  struct stat s {};
  logrado(stat(ruta.parent_path().c_str(), &s), "no se puede usar el directorio " + ruta.parent_path().string());
  const std::size_t numero = std::hash<std::string>{}(ruta.filename().string());
  const std::string nombre =
      "puente/" + std::to_string(s.st_dev) + "/" + std::to_string(s.st_ino) + "/" + std::to_string(numero);
  sockaddr_un dir{};
  dir.sun_family = AF_UNIX;
  std::copy_n(nombre.begin(), std::min(nombre.size(), sizeof dir.sun_path - 1), dir.sun_path + 1);
  descriptor d(logrado(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0), "no se puede reservar el enlace"));
  const auto largo = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + nombre.size());
  if (bind(*d, reinterpret_cast<const sockaddr*>(&dir), largo) == 0) return d;
  if (errno == EADDRINUSE) throw std::runtime_error("otra placa tiene ya el enlace " + ruta.string());
  fallar("no se puede reservar el enlace " + ruta.string());
}

void comprobar_sitio(const fs::path& ruta) {
  std::error_code no_importa;
  const fs::file_status estado = fs::symlink_status(ruta, no_importa);
  if (!fs::exists(estado)) return;
  if (!fs::is_symlink(estado)) throw std::runtime_error(ruta.string() + " existe y no es un enlace simbólico");
  const std::string destino = fs::read_symlink(ruta, no_importa);
  if (destino.starts_with("/dev/pts/") || !fs::exists(ruta, no_importa)) return;
  throw std::runtime_error(ruta.string() + " es un enlace a " + destino + ", que no es de una placa");
}

/// By this machine's clock, whoever keeps the folder: to programs a link that is older than its terminal is not of it.
void fechar(const std::string& ruta) {
  timespec ahora{};
  ::clock_gettime(CLOCK_REALTIME, &ahora);
  const std::array fechas{ahora, ahora};
  (void)utimensat(AT_FDCWD, ruta.c_str(), fechas.data(), AT_SYMLINK_NOFOLLOW);
}

}  // namespace

enlace::enlace(const fs::path& ruta, std::string destino) : ruta_(fs::absolute(ruta)), destino_(std::move(destino)) {
  std::error_code error;
  fs::create_directories(ruta_.parent_path(), error);
  cerrojo_ = cerrar_para_otros(ruta_);
  comprobar_sitio(ruta_);
  const std::string provisional = ruta_.string() + "." + std::to_string(getpid()) + ".tmp";
  logrado(symlink(destino_.c_str(), provisional.c_str()), "no se puede crear el enlace " + ruta_.string());
  fechar(provisional);
  if (rename(provisional.c_str(), ruta_.c_str()) != 0) {
    const int motivo = errno;
    unlink(provisional.c_str());
    errno = motivo;
    fallar("no se puede crear el enlace " + ruta_.string());
  }
}

enlace::~enlace() {
  std::error_code error;
  if (fs::read_symlink(ruta_, error) == destino_ && !error) fs::remove(ruta_, error);
}

}  // namespace puente
