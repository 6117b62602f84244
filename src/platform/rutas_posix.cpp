#include "platform/rutas.h"

namespace morvane {

std::filesystem::path ruta_de(std::string_view nombre) {
  return nombre;
}

std::string texto_de(const std::filesystem::path& ruta) {
  return ruta.native();
}

}  // namespace morvane
