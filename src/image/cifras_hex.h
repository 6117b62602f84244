#pragma once

#include <array>
#include <cstdint>

namespace morvane {

/// The value of each character as a hexadecimal digit, -1 where it is none: a load looks at every character of its
/// file.
constexpr std::array<std::int8_t, 256> hacer_cifras() {
  std::array<std::int8_t, 256> tabla{};
  tabla.fill(-1);
  for (std::int8_t i = 0; i < 10; ++i) tabla['0' + i] = i;
  for (std::int8_t i = 0; i < 6; ++i) tabla['A' + i] = tabla['a' + i] = static_cast<std::int8_t>(10 + i);
  return tabla;
}

inline constexpr auto cifras_hex = hacer_cifras();

constexpr int cifra(char c) {
  return cifras_hex[static_cast<unsigned char>(c)];
}

}  // namespace morvane
