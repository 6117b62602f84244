#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace morvane::console {

/// One entry of the table of what is to be loaded.
struct segmento_elf {
  /// 1 if it is to be loaded.
  std::uint32_t tipo = 0;
  /// Where its bytes stand in the file, where they go, and how many they are.
  std::uint64_t en_fichero = 0, direccion = 0, bytes = 0;
};

struct tabla_elf {
  std::uint16_t procesador = 0;
  std::vector<segmento_elf> segmentos;
};

/// Of a whole file; nothing where that is no ELF file, or a damaged one.
std::optional<tabla_elf> leer_tabla_elf(std::string_view contenido);

}  // namespace morvane::console
