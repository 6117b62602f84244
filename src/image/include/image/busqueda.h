#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace morvane {

/// What is looked for in a buffer.
struct patron {
  std::vector<std::uint8_t> bytes;
  /// The letters A to Z are found in both cases.
  bool sin_mayusculas = false;
};

/// Bytes written as pairs of hexadecimal digits, with blanks between them or not. Nothing if there is another character
/// or a digit without its second one.
std::optional<patron> patron_de_bytes(std::string_view texto);
/// The bytes of a text, in either case of its letters.
patron patron_de_texto(std::string_view texto);

enum class sentido { adelante, atras };

struct hallazgo {
  std::size_t dir;
  /// The search went on at the other end.
  bool vuelta;
};

/// The nearest place of `que`, which must not be empty, that begins at `desde` or behind it; where `hacia` is `atras`,
/// in front of `desde`. From the end, or the beginning, the search goes on at the other one.
std::optional<hallazgo> buscar(std::span<const std::uint8_t> bytes, const patron& que, std::size_t desde,
                               sentido hacia);

}  // namespace morvane
