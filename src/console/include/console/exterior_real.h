#pragma once

#include <memory>
#include <string>
#include <vector>

#include "console/exterior.h"

namespace morvane::console {

/// The program's real world: the standard outputs, the clock, the signals that ask for a stop, the serial lines of the
/// host. To be made before anything is opened, and once.
std::unique_ptr<exterior> exterior_real();

/// The words behind the program's name, as UTF-8.
std::vector<std::string> palabras(int argc, char** argv);

}  // namespace morvane::console
