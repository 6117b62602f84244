#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "console/clave.h"

/// The file of the key: a line that says what it is, the seed and the public half.
namespace morvane::console {

using semilla = std::array<std::uint8_t, 32>;

inline constexpr const char* fichero_de_clave = "firma.clave";
/// No file of a key is as long as that.
inline constexpr std::size_t clave_maxima = 512;

std::string contenido_de(const semilla& s);

/// Only what comes out the same when it is written again is a whole key.
std::optional<clave> clave_en(std::string_view contenido);

}  // namespace morvane::console
