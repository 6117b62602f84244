#pragma once

#include <cstdint>
#include <string_view>

#include "image/tramo.h"

/// The microcontroller that is programmed: all that another one would change. Its commands have six address digits.
namespace morvane {

/// What its write command takes at a time, and how that reads where nothing has been written.
constexpr std::int32_t bytes_por_palabra = 4;
constexpr std::uint32_t palabra_en_blanco = 0xFFFFFFFF;

struct descripcion_chip {
  /// Size of the flash in bytes.
  std::int32_t flash;
  /// Size of the blocks that the bridge examines; a divisor of `flash`.
  std::int32_t bloque;
  /// Where the processor finds stack and start after a RESET.
  tramo arranque;
  /// The configuration field, which no firmware file may set.
  tramo configuracion;
  /// The word in it that protects the flash, and the digits that do.
  tramo palabra_proteccion;
  std::string_view valor_proteccion;
  /// The command that writes the configuration register: the clock divider for the flash.
  std::string_view comando_configuracion;
};

constexpr descripcion_chip chip{.flash = 0x40000,
                                .bloque = 0x8000,
                                .arranque = {0, 8},
                                .configuracion = {0x400, 0x420},
                                .palabra_proteccion = {0x414, 0x418},
                                .valor_proteccion = "FFFF4AC8",
                                .comando_configuracion = "d2E"};

static_assert(chip.flash % chip.bloque == 0);
static_assert(chip.configuracion.contiene(chip.palabra_proteccion));
static_assert(chip.valor_proteccion.size() == std::size_t{2} * chip.palabra_proteccion.largo());

}  // namespace morvane
