#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "image/variables_grab.h"

namespace morvane {

/// "e", the last six digits of `dir`, and the two characters of `cuenta`.
std::string comando_de_lectura(std::int64_t dir, std::string_view cuenta);

/// Byte `k`, from 0, of a reply to a reading: the digits begin behind the code and end before the last character. What
/// is missing reads as 0, a single digit as its own value.
std::uint8_t byte_leido(std::string_view respuesta, std::int64_t k);

/// "C", the six digits of the first address, and those of how many bytes come behind it: the bridge examines `donde`.
std::string comando_de_bloque(tramo donde);

/// How many blocks the verifications go through: those of the flash, and one behind it for the two cells that the image
/// has beyond it.
constexpr int bloques_examinados = total_flash / chip.bloque + 1;

}  // namespace morvane
