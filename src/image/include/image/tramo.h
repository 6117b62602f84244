#pragma once

#include <cstddef>
#include <cstdint>

namespace morvane {

/// The addresses from `desde` up to but without `hasta`.
struct tramo {
  std::int32_t desde = 0, hasta = 0;
  constexpr bool vacio() const { return hasta <= desde; }
  constexpr std::int32_t largo() const { return hasta - desde; }
  constexpr bool contiene(tramo otro) const { return desde <= otro.desde && otro.hasta <= hasta; }
  bool operator==(const tramo&) const = default;
};

/// `cuantos` addresses from `dir`.
constexpr tramo tramo_de(std::size_t dir, std::size_t cuantos) {
  return {static_cast<std::int32_t>(dir), static_cast<std::int32_t>(dir + cuantos)};
}

}  // namespace morvane
