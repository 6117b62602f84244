#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "bridge/adaptador.h"
#include "bridge/chip.h"
#include "bridge/faltas.h"

namespace puente {

/// What the command line of the board says.
struct opciones {
  /// Link to the terminal; empty for none. Files likewise.
  std::string enlace, flash, traza;
  /// A trace to be played in place of a board; empty for none. Then there is no chip, and nothing is done wrong.
  std::string reproducir;
  /// Bits a second in both directions; 0 for a line without a pace.
  unsigned baudios = 57600;
  /// The adapter that the board is behind; none for a line without one.
  std::optional<modelo_adaptador> cable;
  /// The flash holds the protection word from the start.
  bool protegida = false;
  conducta modo;
  faltas fallos;
  /// The fault that was drawn by lot, which `modo` and `fallos` then have in them; empty for none.
  std::string averia;
  /// The run ends with whoever holds the other end of the standard input.
  bool ligada = false;
  bool ayuda = false;
};

struct lectura_opciones {
  opciones valores;
  /// Empty, or one Spanish line that names the argument and what is wrong with it.
  std::string error;
};

/// Reads arguments, the program's name not among them. "--nombre valor" and "--nombre=valor" say the same; of an option
/// that comes twice the last one counts. Looks no further once the help is asked for.
lectura_opciones leer_opciones(std::span<const char* const> argumentos);

/// The help, in Spanish, every option in it.
std::string texto_de_ayuda();

}  // namespace puente
