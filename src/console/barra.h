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
/// A number with one decimal and a comma.
std::string decimal(double x);
/// A whole number with a point after every three digits from 10.000 on.
std::string entero(std::int64_t n);

}  // namespace morvane::console
