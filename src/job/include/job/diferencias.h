#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "image/tramo.h"
#include "job/objetivo.h"

namespace morvane::job {

/// What a difference looks like.
enum class aspecto {
  /// Cells that should be erased hold something.
  no_borrado,
  /// Words that should hold something are erased.
  no_grabado,
  /// Bits are 0 that should be 1, and the rest is right; the other way round.
  bit_a_0,
  bit_a_1,
  /// What should stand here stands `corrimiento` bytes further up.
  movido,
  otro,
};

struct diferencia {
  /// From the first byte that differs up to behind the last one.
  tramo donde;
  aspecto clase = aspecto::otro;
  std::int32_t corrimiento = 0;
  bool operator==(const diferencia&) const = default;
};

/// How and where `hay`, 256 KiB, differs from `debe`. In the order of their addresses.
std::vector<diferencia> comparar(const objetivo& debe, std::span<const std::uint8_t> hay);

}  // namespace morvane::job
