#include "flash/bloque.h"

#include "files/texto.h"

namespace morvane {

namespace {

constexpr std::uint32_t seis_digitos = 0xFFFFFF;

}  // namespace

std::string comando_de_lectura(std::int64_t dir, std::string_view cuenta) {
  std::string comando = "e";
  anadir_hex(comando, static_cast<std::uint32_t>(dir) & seis_digitos, 6);
  return comando.append(cuenta);
}

std::uint8_t byte_leido(std::string_view respuesta, std::int64_t k) {
  if (respuesta.size() < 2) return 0;
  const std::string_view digitos = respuesta.substr(1, respuesta.size() - 2);
  const auto donde = static_cast<std::size_t>(2 * k);
  if (donde >= digitos.size()) return 0;
  return static_cast<std::uint8_t>(valor_hex(digitos.substr(donde, 2)));
}

std::string comando_de_bloque(tramo donde) {
  return "C" + hex(static_cast<std::uint32_t>(donde.desde), 6) + hex(static_cast<std::uint32_t>(donde.largo() - 1), 6);
}

}  // namespace morvane
