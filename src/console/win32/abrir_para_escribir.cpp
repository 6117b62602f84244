#include "abrir_para_escribir.h"

namespace morvane::console {

std::FILE* abrir_para_escribir(const std::filesystem::path& ruta) {
  return ::_wfopen(ruta.c_str(), L"wbN");
}

}  // namespace morvane::console
