#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "job/conversacion.h"
#include "job/desenlace.h"
#include "job/diferencias.h"
#include "job/objetivo.h"

namespace morvane::job {

/// What holds a proof up: nine sums, or every byte.
enum class prueba { sumas, lectura };

/// What an exchange costs.
struct medida {
  /// The shortest, the middle and the longest time of a look at the status, 12 characters both ways.
  tiempo minimo{0}, medio{0}, maximo{0};
  /// The same of a reading of 32 bytes, 82 characters, in the middle.
  tiempo lectura{0};
  /// Time of a character, by the two; of two exchanges as long as those of a word, 34 characters, in the middle; and of
  /// a whole flash written word by word and proved by sums, the erase left out.
  tiempo por_caracter{0}, palabra{0}, flash_entera{0};
  int muestras = 0;
};

/// What an order has found and done. What does not belong to the order stays empty.
struct resultado {
  job::fin fin;
  cuenta gastos;
  tiempo duracion{0};
  /// The chip has confirmed that it was closed.
  bool cerrado = false;
  std::optional<estado_chip> estado;
  /// Was an erase needed?
  std::optional<bool> borrado;
  /// Words written or read back, those that did not differ from erased ones not among them unless they were asked for.
  std::int64_t palabras = 0;
  std::optional<job::prueba> prueba;
  /// What the board said of the chip at the end.
  std::optional<firma> sumas;
  /// What was read: all of a proof by reading, or the range asked for.
  std::vector<std::uint8_t> leido;
  std::vector<diferencia> diferencias;
  /// Which of the images asked about are in the chip, by their places in the list; and whether the chip is blank.
  std::vector<std::size_t> identificados;
  bool en_blanco = false;
  std::optional<job::medida> medida;
};

}  // namespace morvane::job
