#include "platform/rutas.h"

namespace morvane {

std::filesystem::path ruta_de(std::string_view nombre) {
  return nombre;
}

std::string texto_de(const std::filesystem::path& ruta) {
  return ruta.native();
}

std::filesystem::path ruta_de_url(std::string_view parte) {
  return parte;
}

}  // namespace morvane
