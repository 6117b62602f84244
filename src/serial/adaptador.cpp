#include "serial/adaptador.h"

namespace morvane {

std::string adaptador::nombre() const {
  if (producto.empty()) return identidad.empty() ? "" : "adaptador USB " + identidad;
  return fabricante.empty() ? producto : producto + " (" + fabricante + ")";
}

}  // namespace morvane
