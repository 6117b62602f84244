#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace morvane::console {

/// SHA-256 of `bytes`: 64 hexadecimal digits in lower case.
std::string sha256(std::span<const std::uint8_t> bytes);

}  // namespace morvane::console
