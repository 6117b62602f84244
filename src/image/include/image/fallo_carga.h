#pragma once

#include <cstdint>

#include "files/causa_archivo.h"
#include "image/variables_grab.h"

namespace morvane {

/// Why a firmware file could not be loaded.
struct fallo_carga {
  enum class clase : std::uint8_t {
    /// The file itself: `archivo`.
    archivo,
    /// A record of type `tipo` of `hay` characters, and it needs `limite`.
    linea_corta,
    /// `hay` characters of data in a record, and `limite` are the most.
    datos_largos,
    /// The character `hay`, counted from 1, is one of the address and no hexadecimal digit.
    cifra,
    /// The address `hay` is that of no cell.
    fuera_de_memoria,
    /// A line of a binary file of `hay` characters, and `limite` are the most.
    linea_larga,
    /// The bytes up to this line do not fit.
    no_cabe,
  };
  clase cual = clase::archivo;
  std::uint64_t hay = 0, limite = 0;
  int tipo = 0;
  causa_archivo archivo{};
  /// Counted from 1; 0 where it is the file itself.
  std::uint64_t linea = 0;
  bool operator==(const fallo_carga&) const = default;
};

/// `fallo` as that of the line `numero`, counted from 1.
fallo_carga fallo_en_linea(std::uint64_t numero, fallo_carga fallo);
/// That the file itself cannot be read.
fallo_carga fallo_de_archivo(const causa_archivo& causa);

/// Gives up what a load has stored: wipes the image and sets `dir_max` to 0. Marks stay.
void desechar_carga(Variables_grab& v);

}  // namespace morvane
