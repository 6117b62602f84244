#pragma once

#include <span>
#include <string>

#include "console/exterior.h"

namespace morvane::console {

/// The whole program: reads the words behind its name, does what they say, tells it, and gives the exit code. Throws
/// nothing. No line is open afterwards.
int correr(std::span<const std::string> palabras, exterior& fuera);

}  // namespace morvane::console
