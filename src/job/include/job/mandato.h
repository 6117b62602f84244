#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "image/chip.h"
#include "image/tramo.h"

namespace morvane::job {

/// How patient a command's wait is.
enum class paciencia { abrir, normal, examen };

/// A command of the wire protocol, with the one length that its reply has.
struct mandato {
  std::string texto;
  /// Characters between the code and the checksum of its reply.
  std::size_t datos = 0;
  paciencia espera = paciencia::normal;

  /// Characters of command and reply on the wire, frames included.
  std::int64_t coste() const;
};

mandato abrir_chip();
mandato cerrar_chip();
mandato permitir_escritura();
mandato ver_estado();
mandato configurar();
mandato borrar_todo();
mandato reiniciar();
/// `dir` a multiple of 4 within the flash; the lowest address in the highest byte of `palabra`.
mandato grabar(std::int32_t dir, std::uint32_t palabra);
/// 1 to 127 bytes.
mandato leer(std::int32_t dir, std::int32_t cuantos);

/// How much a "C" looks at. Its reply has one of two shapes.
constexpr std::int32_t ventana_corta = 0x401;
constexpr std::int32_t ventana_larga = chip.bloque;
/// `cuantos` is one of these two.
mandato examinar(std::int32_t dir, std::int32_t cuantos);

/// What a "C" says of a range.
struct examen {
  std::uint32_t suma = 0;
  /// All of it is erased. Only said of a whole block.
  bool borrado = false;
};

}  // namespace morvane::job
