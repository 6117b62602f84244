#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "image/chip.h"
#include "image/tramo.h"
#include "image/variables_grab.h"
#include "job/mandato.h"

namespace morvane::job {

constexpr int bloques_de_flash = chip.flash / ventana_larga;

/// The digits that protect the flash, as a word.
std::uint32_t palabra_de_proteccion();

/// What nine sums say of 256 KiB.
struct firma {
  /// Of the first 1,025 bytes.
  std::uint32_t principio = 0;
  std::array<std::uint32_t, bloques_de_flash> bloques{};
  bool operator==(const firma&) const = default;
  /// That of an erased flash.
  static firma en_blanco();
};

/// What the whole flash holds after a program run: what the image holds from its first marked address, rounded down to
/// a word, up to `dir_max`, rounded up; and erased cells everywhere else. Cells of the image beyond the flash are left
/// out.
struct objetivo {
  /// All erased.
  objetivo();
  explicit objetivo(const Variables_grab& v);

  std::vector<std::uint8_t> bytes;
  /// What is written, whole words; empty if the image has no data.
  tramo escrito{};

  /// `dir` a multiple of 4.
  std::uint32_t palabra(std::int32_t dir) const;
  std::uint32_t suma(tramo donde) const;
  firma sumas() const;
  /// The protection word stands in it: the chip will be protected from its next opening on.
  bool protege() const;
};

}  // namespace morvane::job
