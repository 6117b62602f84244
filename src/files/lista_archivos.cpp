#include "files/lista_archivos.h"

#include <algorithm>

#include "files/campos.h"
#include "files/texto.h"

namespace morvane {

namespace {

/// The longest path that the host takes, in bytes.
constexpr std::size_t ruta_mas_larga = 4095;

}  // namespace

bool cabe_en_lista(std::string_view ruta) {
  return !ruta.empty() && ruta.size() <= ruta_mas_larga && en_utf8(ruta) == ruta &&
         ruta.find_first_of(std::string_view("\"\r\n\0", 4)) == std::string_view::npos;
}

std::vector<std::string> rutas_de_lista(std::string_view texto) {
  std::vector<std::string> rutas;
  for (std::string_view resto = sin_marca_utf8(texto); !resto.empty();) {
    // Line by line: what this program has added to a file of another's is UTF-8.
    const std::string linea = en_utf8(siguiente_linea(resto));
    if (std::ranges::count(linea, '"') % 2 != 0) continue;
    for (std::string& ruta : campos_entrecomillados(linea)) {
      if (rutas.size() < lista_maxima && cabe_en_lista(ruta)) rutas.push_back(std::move(ruta));
    }
  }
  return rutas;
}

}  // namespace morvane
