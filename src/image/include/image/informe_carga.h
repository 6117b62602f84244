#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "image/tramo.h"

namespace morvane {

/// What the last load has found in its file, as the user is told of it.
struct informe_carga {
  enum class estado : std::uint8_t {
    /// No file so far, or none was chosen.
    nada,
    /// Its extension is of no kind that is known.
    desconocido,
    /// It could not be loaded.
    fallido,
    /// The user has stopped it: the image ends there.
    detenido,
    entero,
  };
  estado como = estado::nada;
  /// Lines of a record with data, and bytes that they have brought, those that were set twice counted twice.
  std::uint64_t registros = 0, bytes = 0;
  /// Where they went, in the order of the addresses, none touching the next.
  std::vector<tramo> tramos{};
  /// Lines that are no record at all; of those that look like data nevertheless, how many and the number of the first.
  std::uint64_t ajenas = 0, parecidas = 0, primera_parecida = 0;
  /// Records whose sum or length is wrong, which are taken all the same, and the number of the first line.
  std::uint64_t malas = 0, primera_mala = 0;
  /// Bytes for the chip's configuration field that were something else than 0, which no file can set.
  std::uint64_t retirados = 0;

  /// True if something of the file may be missing from the image, or wrong in it.
  bool dudoso() const { return como == estado::detenido || parecidas > 0 || malas > 0 || retirados > 0; }
  /// Bytes that are set, each once.
  std::int64_t ocupados() const;
  /// From the first of them to the last.
  tramo entre() const;

  /// Notes a line that was not taken, its number counted from 1.
  void anotar_ajena(std::string_view linea, std::uint64_t numero);
  /// Notes a record with data that was taken, with an address of `ancho_dir` digits. The line is whole.
  void anotar_registro(std::string_view linea, std::uint8_t ancho_dir, std::uint64_t numero);
  /// Notes where data went.
  void anotar_tramo(tramo donde);
};

}  // namespace morvane
