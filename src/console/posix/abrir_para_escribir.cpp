#include "abrir_para_escribir.h"

namespace morvane::console {

std::FILE* abrir_para_escribir(const std::filesystem::path& ruta) {
  return std::fopen(ruta.c_str(), "we");
}

}  // namespace morvane::console
