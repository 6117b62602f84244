#pragma once

#include <cstdint>

#include "platform/controles.h"

namespace morvane {

/// What a long operation shows of itself in the main window, and the user's wish to stop it.
struct avance {
  explicit avance(contador_cambios& cambios);

  /// Range 0 to 24.
  ProgressBar Progress;
  /// Time of day at the start and the end of the last long operation; never shown.
  TextBox time_ini, time_fin;
  /// The user wants the running operation stopped.
  bool cancelar = false;
};

/// Adds `paso` to `acumulado` and moves the bar to `acumulado` x 25 / `total`, rounded to whole steps with halves to
/// the even neighbour; a value above 24 leaves the bar where it is, and so does a `total` of 0.
void avanzar_progreso(avance& a, std::int64_t total, std::int64_t paso, std::int64_t& acumulado);

}  // namespace morvane
