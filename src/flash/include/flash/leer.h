#pragma once

#include <cstdint>

#include "image/avance.h"
#include "image/variables_grab.h"
#include "link/enlace.h"

namespace morvane {

/// Reads the flash in blocks of 32 bytes into `buffer_entrada`, which it clears first, from `desde` up to the first
/// block that begins at or above `hasta`; at least one. Ends early between two blocks at the user's stop; what was
/// asked for is stored all the same. Bytes without a cell are stored nowhere, and below address 0 nothing is asked for.
/// Expects an open bracket and the character mode. Reports its own end; leaves the bar at 0 and `cancelar` False.
void leer_flash(enlace& e, Variables_grab& v, avance& a, std::int32_t desde, std::int32_t hasta);

/// What such a reading goes over, from `desde` on; nothing where `desde` is below 0.
tramo alcance_de_lectura(std::int32_t desde, std::int32_t hasta);

}  // namespace morvane
