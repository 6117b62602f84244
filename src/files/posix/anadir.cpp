#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "files/archivos.h"
#include "platform/descriptor.h"

namespace morvane {

namespace {

/// A file edited by hand may lack its last line end; what is added must not run into that line.
bool falta_final_de_linea(int fd, off_t largo) {
  char ultimo = '\n';
  return largo > 0 && ::pread(fd, &ultimo, 1, largo - 1) == 1 && ultimo != '\n' && ultimo != '\r';
}

}  // namespace

error_archivo archivos::anadir_linea(std::string_view nombre, std::string_view texto) const {
  apertura abierto = abrir_normal(encontrar(nombre), O_RDWR | O_APPEND | O_CREAT);
  if (abierto.error != 0) return abierto.error;
  const int fd = abierto.fd.numero();
  struct stat antes {};
  if (::fstat(fd, &antes) != 0) return errno;
  std::string entero = falta_final_de_linea(fd, antes.st_size) ? "\r\n" : "";
  entero += texto;
  const ssize_t hechos = ::write(fd, entero.data(), entero.size());
  if (hechos == static_cast<ssize_t>(entero.size())) {
    const int error = sincronizar(fd);
    if (error == 0 || error == EINVAL) return abierto.fd.cerrar();
    // Not kept for certain, so not kept at all.
    (void)::ftruncate(fd, antes.st_size);
    return error;
  }
  const int error = hechos < 0 ? errno : ENOSPC;
  // Half a line would be read as a path; back to what stood there.
  if (hechos > 0 && ::ftruncate(fd, antes.st_size) != 0) return errno;
  return error;
}

}  // namespace morvane
