#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "job/entorno.h"

namespace morvane::console {

/// What a bar says of a stretch of work in one line of at most `ancho` characters: name, bar, share, rate, time left.
/// `gastado` is the time since it began; nothing is said of rate and time left before half a second of it.
std::string texto_de_barra(std::string_view nombre, std::int64_t hechos, std::int64_t total, job::tiempo gastado,
                           int ancho);

/// A time for a person: "0,4 s", "12 s", "3 min 20 s".
std::string duracion(job::tiempo t);

}  // namespace morvane::console
