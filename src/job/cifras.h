#pragma once

#include <algorithm>
#include <string_view>

namespace morvane::job {

/// True if all of `texto` are hexadecimal digits as a board writes them, letters in upper case.
inline bool son_cifras(std::string_view texto) {
  return std::ranges::all_of(texto, [](char c) { return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F'); });
}

}  // namespace morvane::job
