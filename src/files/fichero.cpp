#include <utility>

#include "files/archivos.h"

namespace morvane {

fichero::fichero(fichero&& otro) noexcept : descriptor_(std::exchange(otro.descriptor_, cerrado)) {}

fichero& fichero::operator=(fichero&& otro) noexcept {
  if (this == &otro) return *this;
  cerrar();
  descriptor_ = std::exchange(otro.descriptor_, cerrado);
  return *this;
}

fichero::~fichero() {
  cerrar();
}

}  // namespace morvane
