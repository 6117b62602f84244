#include "tramas.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <numeric>

#include "bridge/placa.h"

namespace puente {

namespace {

struct orden {
  char letra;
  std::size_t longitud;
};

constexpr std::array<orden, 10> ordenes{
    {{'A', 1}, {'D', 1}, {'a', 1}, {'c', 1}, {'d', 3}, {'e', 9}, {'g', 15}, {'i', 1}, {'j', 1}, {'C', 13}}};
/// The row from 'a' to 'j' has gaps; these letters are known, and nothing stands behind them.
constexpr std::string_view letras_libres = "bfh";

bool es_hex(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
}

}  // namespace

std::string texto_hex(std::uint64_t valor, int cifras) {
  std::string texto;
  for (; valor != 0 || cifras > 0; valor >>= 4, --cifras) texto.push_back("0123456789ABCDEF"[valor & 0xF]);
  std::reverse(texto.begin(), texto.end());
  return texto;
}

std::uint32_t valor_hex(std::string_view texto) {
  std::uint32_t valor = 0;
  std::from_chars(texto.data(), texto.data() + texto.size(), valor, 16);
  return valor;
}

std::string suma(std::string_view texto) {
  const auto sumar = [](std::uint32_t s, char c) { return s + static_cast<unsigned char>(c); };
  return texto_hex(std::accumulate(texto.begin(), texto.end(), 0U, sumar) & 0xFF, 2);
}

char juzgar(std::string_view trama) {
  if (trama.size() > maximo_trama) return '2';
  if (trama.size() < 3) return '4';
  const std::string_view comando = trama.substr(0, trama.size() - 2);
  if (trama.substr(comando.size()) != suma(comando)) return '3';
  if (letras_libres.find(comando[0]) != std::string_view::npos) return '8';
  const auto o = std::find_if(ordenes.begin(), ordenes.end(), [&](const orden& x) { return x.letra == comando[0]; });
  if (o == ordenes.end()) return '6';
  if (comando.size() != o->longitud) return comando.size() > o->longitud ? '2' : '4';
  return std::all_of(comando.begin() + 1, comando.end(), es_hex) ? '0' : '5';
}

}  // namespace puente
