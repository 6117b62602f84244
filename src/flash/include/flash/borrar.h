#pragma once

#include "image/avance.h"
#include "link/enlace.h"

namespace morvane {

/// Erases the whole flash and polls the status until the chip is done, at most 55 times. True if the chip reported
/// done without an error before the 55th poll. After False nothing may be assumed about the flash; the user has seen a
/// message, unless the operation was broken off or the program is asked to close. The map of `a` forgets the chip
/// before the command goes out.
bool borrar_flash(enlace& e, avance& a);

}  // namespace morvane
