#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "console/firmware.h"
#include "files/causa_archivo.h"

namespace morvane::console {

/// Bytes and where they stand.
struct pieza {
  std::int32_t desde = 0;
  std::span<const std::uint8_t> bytes;
};

/// The contents of a file with these pieces, which come in the order of their addresses, do not overlap and lie within
/// the flash. .s19: S1 records where all addresses have four digits, else S2, their count and an end record; where the
/// filling up of a record would leave the flash, its last word is written whole, with FF for what no piece has. .hex:
/// Intel HEX; .bin: with `bin_desde_cero` from address 0 on, else from the first piece, gaps as FF. Not for `elf`.
std::string contenido_de(formato como, std::span<const pieza> piezas, bool bin_desde_cero);

/// The doubt about a file with these pieces, if there is one: loaded from S-records the configuration field is 00
/// wherever a program run writes it, whatever the file says.
std::optional<aviso> duda_al_escribir(formato como, std::span<const pieza> piezas);

/// What a chip holds after a program run of the image and an erased one does not, as pieces of `v`'s own bytes or of
/// `objetivo`. Two files that give the same pieces leave the same chip.
std::vector<tramo> tramos_con_datos(const Variables_grab& v, std::span<const std::uint8_t> flash);

}  // namespace morvane::console
