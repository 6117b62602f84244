// A campaign against the whole program: random users, random faults, on a clock that jumps. Every world follows from
// its seed, so `campana --semilla N --mundos 1` replays what was found in it.

#include <cstdlib>
#include <cstring>
#include <iostream>

#include "mundo.h"

namespace {

constexpr int operaciones_por_mundo = 200;

struct encargo {
  std::uint64_t semilla = 1, mundos = 20;
  bool contar = false;
};

std::optional<encargo> leer_encargo(int argc, char** argv) {
  encargo e;
  for (int i = 1; i < argc; ++i) {
    const std::string nombre = argv[i];
    if (nombre == "--contar") {
      e.contar = true;
    } else if (i + 1 < argc && (nombre == "--semilla" || nombre == "--mundos")) {
      (nombre == "--semilla" ? e.semilla : e.mundos) = std::strtoull(argv[++i], nullptr, 10);
    } else {
      return std::nullopt;
    }
  }
  return e;
}

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

void mostrar(const char* titulo, const std::map<std::string, std::uint64_t>& cuentas) {
  std::cout << titulo << "\n";
  for (const auto& [nombre, cuantas] : cuentas) std::cout << "  " << cuantas << "  " << nombre << "\n";
}

}  // namespace

int main(int argc, char** argv) {
  const auto e = leer_encargo(argc, argv);
  if (!e) {
    std::cerr << "usage: campana [--semilla N] [--mundos N] [--contar]\n"
              << "Worlds of " << operaciones_por_mundo << " operations, from seed N on.\n";
    return 2;
  }
  campana::cuenta c;
  std::uint64_t fallidos = 0;
  for (std::uint64_t s = e->semilla; s < e->semilla + e->mundos; ++s) fallidos += recorrer(s, c) ? 0 : 1;
  if (e->contar) {
    mostrar("faults", c.averias);
    mostrar("gestures", c.gestos);
    mostrar("boxes", c.frases);
  }
  std::cout << c.operaciones << " operations in " << e->mundos << " worlds, " << c.clics_dentro
            << " clicks during them, " << c.cierres << " closings, " << c.muertes
            << " kills; worlds that failed: " << fallidos << "\n";
  return fallidos == 0 ? 0 : 1;
}
