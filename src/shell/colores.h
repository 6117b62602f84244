#pragma once

#include "platform/controles.h"

namespace morvane {

constexpr color gris_claro = 0xE0E0E0, cian = 0x00FFFF, naranja = 0xFFC080, crema = 0xFFE0C0;

}  // namespace morvane
