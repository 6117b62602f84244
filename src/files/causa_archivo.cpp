#include "files/causa_archivo.h"

#include <cerrno>

namespace morvane {

causa_archivo causa_de_lectura(int error) {
  using clase = causa_archivo::clase;
  switch (error) {
    case ENOENT:
    case ENOTDIR:
      return {clase::no_existe};
    case EACCES:
    case EPERM:
      return {clase::sin_permiso};
    case EISDIR:
    case ENODEV:
      return {clase::no_es_normal};
    case ENAMETOOLONG:
      return {clase::nombre_largo};
    case ELOOP:
      return {clase::enlaces_en_circulo};
    case EIO:
      return {clase::disco};
    default:
      return {clase::sistema, error};
  }
}

}  // namespace morvane
