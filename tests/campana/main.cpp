// A campaign against the whole program: random users, random faults, on a clock that jumps. Every world follows from
// its seed, so `campana N 1` replays what was found in world N.

#include <cstdlib>
#include <iostream>

#include "mundo.h"

namespace {

constexpr int operaciones_por_mundo = 200;

/// False if an operation went wrong; the world then ends there.
bool recorrer(std::uint64_t semilla, campana::cuenta& c) {
  campana::mundo m(semilla, c);
  for (int i = 1; i <= operaciones_por_mundo; ++i) {
    if (m.operar()) continue;
    std::cout << "seed " << semilla << ", operation " << i << "\n" << m.informe() << std::flush;
    return false;
  }
  return true;
}

}  // namespace

/// Arguments: the first seed (1), and how many worlds (20).
int main(int argc, char** argv) {
  const std::uint64_t semilla = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1;
  const std::uint64_t mundos = argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 20;
  campana::cuenta c;
  std::uint64_t fallidos = 0;
  for (std::uint64_t s = semilla; s < semilla + mundos; ++s) fallidos += recorrer(s, c) ? 0 : 1;
  for (const auto& [que, cuantas] : c.de) std::cout << "  " << cuantas << "  " << que << "\n";
  std::cout << c.operaciones << " operations in " << mundos << " worlds, " << c.clics_dentro << " clicks during them, "
            << c.cierres << " closings, " << c.muertes << " kills; worlds that failed: " << fallidos << "\n";
  return fallidos == 0 && c.operaciones > 0 ? 0 : 1;
}
