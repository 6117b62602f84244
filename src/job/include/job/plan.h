#pragma once

#include <cstdint>
#include <vector>

#include "image/tramo.h"
#include "image/variables_grab.h"
#include "job/entorno.h"
#include "job/objetivo.h"

namespace morvane::job {

/// What is to be known of an image before it goes to a chip.
enum class duda {
  /// No data at all; data, and every byte of it is FF.
  vacia,
  solo_ff,
  /// Data beyond the flash, which no chip has.
  fuera_de_flash,
  /// It has no stack and no start: with it alone the chip runs nothing after a RESET.
  sin_arranque,
  /// The file set bytes of the configuration field.
  datos_en_configuracion,
  /// What goes to the configuration field differs from erased cells.
  escribe_configuracion,
  /// The chip will be protected from its next opening on.
  protegera,
  /// The window's check by sums will call the chip different after a good run, since it goes by cells of the image that
  /// no run writes.
  ventana_dira_distinta,
  /// The window's check by sums cannot tell a chip with this image from a blank one.
  ventana_no_distingue_de_blanco,
  /// The window's check by sums does not look at all blocks.
  ventana_no_mira_todo,
};

/// What a program run of an image would do, worked out without a board.
struct plan {
  /// What the file set, and what lies between, within what is written.
  std::vector<tramo> datos, huecos;
  tramo escrito{};
  /// Words to write, and those of FFFFFFFF that are passed over.
  std::int64_t palabras = 0, palabras_ff = 0;
  /// Characters of a run on a chip that has to be erased, the polls aside, at most; of one on a blank chip; and of the
  /// window's run.
  std::int64_t caracteres = 0, caracteres_en_blanco = 0, caracteres_ventana = 0;
  /// What goes to the configuration field.
  std::vector<std::uint8_t> configuracion;
  /// What the window's check by sums does not look at; empty if it looks at all.
  tramo sin_mirar{};
  std::vector<duda> dudas;
};

plan planear(const Variables_grab& v);

}  // namespace morvane::job
