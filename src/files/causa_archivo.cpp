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

causa_archivo causa_de_escritura(int error) {
  using clase = causa_archivo::clase;
  switch (error) {
    case ENOSPC:
#ifdef EDQUOT
    case EDQUOT:
#endif
    case EFBIG:
      return {clase::lleno};
    case EROFS:
      return {clase::solo_lectura};
    default:
      return causa_de_lectura(error);
  }
}

}  // namespace morvane
