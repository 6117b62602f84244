#include "files/campos.h"

#include "files/texto.h"

namespace morvane {

std::string_view sin_marca_utf8(std::string_view texto) {
  constexpr std::string_view marca = "\xEF\xBB\xBF";
  if (texto.starts_with(marca)) texto.remove_prefix(marca.size());
  return texto;
}

std::string_view siguiente_linea(std::string_view& resto) {
  const std::size_t fin = resto.find_first_of("\r\n");
  const std::string_view linea = resto.substr(0, fin);
  resto.remove_prefix(linea.size());
  if (resto.starts_with("\r\n")) {
    resto.remove_prefix(2);
  } else if (!resto.empty()) {
    resto.remove_prefix(1);
  }
  return linea;
}

std::vector<std::string> campos_entrecomillados(std::string_view linea) {
  std::vector<std::string> campos;
  std::string_view resto = sin_blancos(linea);
  while (!resto.empty()) {
    std::size_t coma = 0;
    if (resto.front() == '"') {
      const std::size_t cierre = resto.find('"', 1);
      campos.emplace_back(resto.substr(1, cierre == std::string_view::npos ? cierre : cierre - 1));
      coma = cierre == std::string_view::npos ? cierre : resto.find(',', cierre);
    } else {
      coma = resto.find(',');
      campos.emplace_back(sin_blancos(resto.substr(0, coma)));
    }
    if (coma == std::string_view::npos) break;
    resto = sin_blancos(resto.substr(coma + 1));
  }
  return campos;
}

}  // namespace morvane
