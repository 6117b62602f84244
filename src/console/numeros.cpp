#include <algorithm>

#include "console/argumentos.h"
#include "files/texto.h"

namespace morvane::console {

std::optional<std::int64_t> leer_direccion(std::string_view texto) {
  constexpr std::size_t cifras = 8;
  if (texto.starts_with("0x") || texto.starts_with("0X")) texto.remove_prefix(2);
  const bool son_cifras = std::ranges::all_of(texto, [](char c) { return digito_hex(c) >= 0; });
  if (texto.empty() || texto.size() > cifras || !son_cifras) return std::nullopt;
  return valor_hex(texto);
}

}  // namespace morvane::console
