#include "frases/numeros.h"

#include <algorithm>
#include <cstdio>

#include "files/texto.h"

namespace morvane {

std::string decimal(double x) {
  std::string t(32, '\0');
  const int n = std::snprintf(t.data(), t.size(), "%.1f", x);
  t.resize(static_cast<std::size_t>(std::max(n, 0)));
  std::ranges::replace(t, '.', ',');
  return t;
}

std::string entero(std::int64_t n, std::size_t cifras) {
  constexpr std::size_t grupo = 3;
  std::string t = std::to_string(n);
  if (t.size() < cifras) return t;
  for (std::size_t i = t.size(); i > grupo;) {
    i -= grupo;
    t.insert(i, ".");
  }
  return t;
}

std::string direcciones(tramo t) {
  if (t.largo() == 1) return hex(static_cast<std::uint32_t>(t.desde), 6);
  return hex(static_cast<std::uint32_t>(t.desde), 6) + "–" + hex(static_cast<std::uint32_t>(t.hasta - 1), 6);
}

std::string cuantos(std::int64_t n, const std::string& uno, const std::string& varios) {
  return entero(n, 4) + " " + (n == 1 ? uno : varios);
}

}  // namespace morvane
