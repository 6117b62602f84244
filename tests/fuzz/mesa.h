#pragma once

#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include "apoyo/carpeta.h"
#include "apoyo/guion.h"
#include "files/archivos.h"
#include "platform/gemelo.h"

namespace apoyo {

/// Ends a fuzz run with a word on what did not hold.
inline void exigir(bool cierto, const char* que) {
  if (cierto) return;
  std::fprintf(stderr, "does not hold: %s\n", que);
  std::abort();
}

/// The twin, a line to a board by script, and a directory that stays from run to run.
struct mesa {
  mesa() { plat.vigilar(lejos); }

  static inline carpeta dir;
  morvane::archivos ficheros{dir.ruta()};
  morvane::gemelo plat;
  guion lejos;
  morvane::transporte_memoria linea{plat, lejos};
};

/// A firmware file from the fuzzer's bytes. The first two say whether lines of no meaning stand in front, so that what
/// follows lies around the end of the first 64 KiB, and how these lines end.
inline std::string archivo_de(const std::uint8_t* datos, std::size_t largo) {
  if (largo < 2) return {};
  std::string resto(reinterpret_cast<const char*>(datos) + 2, largo - 2);
  if (datos[0] < 240) return resto;
  std::string entero(std::size_t{64} * 1024 - datos[0] % 16 * datos[1] / 16, 'x');
  for (std::size_t i = 250; i + 2 < entero.size(); i += 252) entero.replace(i, 2, datos[1] % 2 == 0 ? "\r\n" : "x\n");
  return entero + resto;
}

/// The lines of a text; an LF behind a CR belongs to it.
inline std::vector<std::string> lineas_de(const std::string& texto, const char* finales) {
  std::vector<std::string> lineas;
  for (std::size_t i = 0; i < texto.size();) {
    const std::size_t fin = std::min(texto.find_first_of(finales, i), texto.size());
    lineas.push_back(texto.substr(i, fin - i));
    i = fin + 1;
    if (fin < texto.size() && texto[fin] == '\r' && i < texto.size() && texto[i] == '\n') ++i;
  }
  return lineas;
}

}  // namespace apoyo
