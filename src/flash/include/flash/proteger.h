#pragma once

#include "link/enlace.h"

namespace morvane {

/// Writes the protection word, closes and opens the chip, and tells the user whether it now reports itself protected.
/// Expects `habilitar_flash` to have succeeded right before, and the character mode.
void proteger_flash(enlace& e);

}  // namespace morvane
