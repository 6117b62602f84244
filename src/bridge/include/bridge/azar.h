#pragma once

#include <cstdint>
#include <random>
#include <span>

namespace puente {

/// Lots that follow from a seed.
class azar {
 public:
  explicit azar(std::uint64_t semilla) : fuente_(semilla) {}
  /// 0 to `n` - 1; `n` above 0.
  std::uint64_t hasta(std::uint64_t n) { return fuente_() % n; }
  bool una_de(std::uint64_t n) { return hasta(n) == 0; }
  template <class T>
  const T& uno(std::span<const T> de) {
    return de[hasta(de.size())];
  }

 private:
  std::mt19937_64 fuente_;
};

}  // namespace puente
