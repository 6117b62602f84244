#include "clave_texto.h"

#include <sodium.h>

namespace morvane::console {

namespace {

constexpr std::string_view primera_linea = "morvane, clave de firma 1\n";
constexpr std::size_t cifras = 64;

}  // namespace

std::string contenido_de(const semilla& s) {
  std::array<char, cifras + 1> texto{};
  sodium_bin2hex(texto.data(), texto.size(), s.data(), s.size());
  return std::string(primera_linea) + texto.data() + "\n" + clave(s).publica() + "\n";
}

std::optional<clave> clave_en(std::string_view contenido) {
  semilla s{};
  if (contenido.size() < primera_linea.size() + cifras) return std::nullopt;
  const std::string_view texto = contenido.substr(primera_linea.size(), cifras);
  std::size_t largo = 0;
  if (sodium_hex2bin(s.data(), s.size(), texto.data(), texto.size(), nullptr, &largo, nullptr) != 0)
    return std::nullopt;
  if (largo != s.size() || contenido_de(s) != contenido) return std::nullopt;
  return clave(s);
}

}  // namespace morvane::console
