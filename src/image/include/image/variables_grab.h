#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "image/chip.h"
#include "image/informe_carga.h"

namespace morvane {

/// Size of the chip's flash in bytes.
constexpr std::int32_t total_flash = chip.flash;
/// Cells of each array: those of the flash and two more, which a firmware file may fill and no chip has.
constexpr std::int32_t total_celdas = total_flash + 2;

/// The memory image: what to program, what was read, and how far each reaches. Indices are flash addresses.
struct Variables_grab {
  Variables_grab();

  /// The image to program.
  std::vector<std::uint8_t> buffer_salida;
  /// Not 0 at each address that a load of this run of the program stored; never cleared.
  std::vector<std::uint8_t> mascara_salida;
  /// What was read from the flash.
  std::vector<std::uint8_t> buffer_entrada;
  /// Highest address stored by the last load; 0 when no program is loaded.
  std::int32_t dir_max = 0;
  /// `dir_max` when the last programming run ended; 0 when nothing was programmed in this run of the program.
  std::int32_t dir_max_grabada = 0;
  /// Last address of the last read.
  std::int32_t dir_fin_lectura = 0;
  /// Path of the current firmware file in the host's own form; empty when none.
  std::string ruta_archivo;
  /// Of the last load.
  informe_carga carga;
};

/// True if a cell with this address exists.
constexpr bool hay_celda(std::int64_t dir) {
  return dir >= 0 && dir < total_celdas;
}

/// Stores a byte of a firmware file: cell, mark and `dir_max`. `dir` must be the address of a cell.
void poner_byte(Variables_grab& v, std::int32_t dir, std::uint8_t valor);

/// Sets all cells of `buffer_salida` to 0xFF and nothing else.
void limpiar_buffer_salida(Variables_grab& v);

/// Sets all cells of `buffer_entrada` to 0.
void limpiar_buffer_entrada(Variables_grab& v);

}  // namespace morvane
