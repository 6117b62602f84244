#include "bridge/traza.h"

#include <cstdio>

#include "tramas.h"

namespace puente {

namespace {

std::string visible(char c) {
  if (c == stx) return "<STX>";
  if (c == etx) return "<ETX>";
  if (c >= ' ' && c <= '~' && c != '<') return std::string(1, c);
  return "<" + texto_hex(static_cast<unsigned char>(c), 2) + ">";
}

}  // namespace

std::string renglon_de_traza(char direccion, std::string_view trama, instante cuando) {
  std::string tiempo(32, '\0');
  const long long us = cuando.count();
  const int largo =
      std::snprintf(tiempo.data(), tiempo.size(), "%6lld.%06lld %c ", us / 1'000'000, us % 1'000'000, direccion);
  tiempo.resize(static_cast<std::size_t>(largo));
  for (const char c : trama) tiempo += visible(c);
  return tiempo;
}

}  // namespace puente
