#pragma once

#include "apoyo/carpeta.h"
#include "apoyo/guion.h"
#include "fuzz/exigir.h"
#include "platform/archivos.h"
#include "platform/gemelo.h"

namespace apoyo {

/// The twin, a line to a board by script, and a directory that stays from run to run.
struct mesa {
  mesa() { plat.vigilar(lejos); }

  static inline carpeta dir;
  morvane::archivos ficheros{dir.ruta()};
  morvane::gemelo plat;
  guion lejos;
  morvane::transporte_memoria linea{plat, lejos};
};

}  // namespace apoyo
