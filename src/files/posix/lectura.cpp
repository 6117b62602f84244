#include "lectura.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/descriptor.h"

namespace morvane {

struct lectura::archivo {
  descriptor fd;
  struct stat al_abrir {};
  int error = 0;
};

lectura::lectura() : a_(std::make_unique<archivo>()) {}
lectura::~lectura() = default;

int lectura::abrir(const std::string& ruta) {
  a_->al_abrir = {};
  apertura abierto = abrir_normal(ruta, O_RDONLY);
  a_->fd = std::move(abierto.fd);
  if (abierto.error != 0) return abierto.error;
  return ::fstat(a_->fd.numero(), &a_->al_abrir) == 0 ? 0 : errno;
}

bool lectura::abierta() const {
  return a_->fd.abierto();
}

void lectura::cerrar() {
  a_->fd.cerrar();
}

std::uint64_t lectura::tamano() const {
  return static_cast<std::uint64_t>(a_->al_abrir.st_size);
}

std::int64_t lectura::leer(char* destino, std::size_t cuantos) {
  const long hechos = leer_bytes(a_->fd.numero(), destino, cuantos);
  a_->error = hechos < 0 ? errno : 0;
  return hechos;
}

int lectura::error() const {
  return a_->error;
}

bool lectura::sigue_igual() const {
  const struct stat& antes = a_->al_abrir;
  struct stat ahora {};
  return ::fstat(a_->fd.numero(), &ahora) == 0 && ahora.st_size == antes.st_size &&
         ahora.st_mtim.tv_sec == antes.st_mtim.tv_sec && ahora.st_mtim.tv_nsec == antes.st_mtim.tv_nsec;
}

}  // namespace morvane
