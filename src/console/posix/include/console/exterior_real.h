#pragma once

#include <memory>

#include "console/exterior.h"

namespace morvane::console {

/// The program's real world: the standard outputs, the clock, the signals that ask for a stop, the serial lines of the
/// host. To be made before anything is opened, and once.
std::unique_ptr<exterior> exterior_real();

}  // namespace morvane::console
