#pragma once

#include <cstdint>
#include <string>

#include "image/tramo.h"

/// Numbers as a person reads them in Spanish.
namespace morvane {

/// With one decimal and a comma.
std::string decimal(double x);

/// With a point before every three digits, where it has at least `cifras` of them.
std::string entero(std::int64_t n, std::size_t cifras = 5);

/// The first address of `t`, which is not empty, and the last one, in six digits: "000000–0013B3"; one alone if it has
/// no other.
std::string direcciones(tramo t);

/// "1 registro", "2 registros": `n` of what is called `uno` in the singular and `varios` in the plural.
std::string cuantos(std::int64_t n, const std::string& uno, const std::string& varios);

}  // namespace morvane
