#pragma once

#include "link/enlace.h"

namespace morvane {

/// Brings the chip to where a flash command works: write enable, configuration register, write enable again, each
/// confirmed by the status. True if all were. After False the user has seen a message, unless the operation was broken
/// off or the program is asked to close. Expects an open bracket and the character mode, and leaves both.
bool habilitar_flash(enlace& e);

/// The same without the second write enable.
bool habilitar_flash_reset(enlace& e);

}  // namespace morvane
