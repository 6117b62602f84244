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

/// "C", the six digits of `dir`, and "007FFF": the block of 32,768 bytes from there on.
std::string comando_de_bloque(std::int32_t dir);

/// Size of the blocks that the bridge examines, and how many the verifications go through: those of the flash, and one
/// behind it for the two cells that the image has beyond it.
constexpr std::int32_t bytes_examinados = 0x8000;
constexpr int bloques_examinados = total_flash / bytes_examinados + 1;

}  // namespace morvane
