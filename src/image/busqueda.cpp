#include "image/busqueda.h"

#include <algorithm>

#include "files/texto.h"

namespace morvane {

namespace {

using bytes_vistos = std::span<const std::uint8_t>;

std::uint8_t minuscula(std::uint8_t byte) {
  return byte >= 'A' && byte <= 'Z' ? static_cast<std::uint8_t>(byte + ('a' - 'A')) : byte;
}

/// The first place, or with `atras` the last one, that lies wholly in `donde`, counted from its beginning.
std::optional<std::size_t> lugar_de(bytes_vistos donde, const patron& que, sentido hacia) {
  const auto iguales = [&que](std::uint8_t uno, std::uint8_t otro) {
    return que.sin_mayusculas ? minuscula(uno) == minuscula(otro) : uno == otro;
  };
  const auto principio = que.bytes.begin(), fin = que.bytes.end();
  const auto donde_esta = hacia == sentido::adelante
                              ? std::search(donde.begin(), donde.end(), principio, fin, iguales)
                              : std::find_end(donde.begin(), donde.end(), principio, fin, iguales);
  if (donde_esta == donde.end()) return std::nullopt;
  return static_cast<std::size_t>(donde_esta - donde.begin());
}

}  // namespace

std::optional<patron> patron_de_bytes(std::string_view texto) {
  patron que;
  int alta = -1;
  for (const char c : texto) {
    const int cifra = digito_hex(c);
    if (cifra < 0 && (c != ' ' || alta >= 0)) return std::nullopt;
    if (cifra < 0) continue;
    if (alta >= 0) que.bytes.push_back(static_cast<std::uint8_t>(alta * 16 + cifra));
    alta = alta >= 0 ? -1 : cifra;
  }
  if (alta >= 0) return std::nullopt;
  return que;
}

patron patron_de_texto(std::string_view texto) {
  return {{texto.begin(), texto.end()}, true};
}

std::optional<hallazgo> buscar(bytes_vistos bytes, const patron& que, std::size_t desde, sentido hacia) {
  const bool adelante = hacia == sentido::adelante;
  const std::size_t partida = std::min(desde, bytes.size());
  const std::size_t hasta = std::min(partida + que.bytes.size() - 1, bytes.size());
  const bytes_vistos cercanos = adelante ? bytes.subspan(partida) : bytes.first(hasta);
  if (const auto lugar = lugar_de(cercanos, que, hacia)) return hallazgo{*lugar + (adelante ? partida : 0), false};
  if (const auto lugar = lugar_de(bytes, que, hacia)) return hallazgo{*lugar, true};
  return std::nullopt;
}

}  // namespace morvane
