#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace morvane {

/// Hexadecimal text of `valor`, upper case, padded with "0" on the left to at least `ancho` digits.
std::string hex(std::uint32_t valor, std::size_t ancho = 1);
/// Appends the same to `destino`.
void anadir_hex(std::string& destino, std::uint32_t valor, std::size_t ancho);

/// Value of a hexadecimal digit in either case, -1 for any other character.
int digito_hex(char c);
/// Value of the leading hexadecimal digits of `texto`, in either case, up to the first other character; 0 if there are
/// none. Of more than eight digits the last eight count.
std::uint32_t valor_hex(std::string_view texto);

/// `texto` with the ASCII letters in upper case.
std::string mayusculas(std::string_view texto);
/// `texto` without the blanks at both ends.
std::string_view sin_blancos(std::string_view texto);

/// Number of characters of a UTF-8 text. A byte that belongs to no valid sequence counts as one character.
std::size_t longitud(std::string_view texto);
/// `cuantos` characters of a UTF-8 text from position `inicio`, counted from 1, as far as there are any. Never splits a
/// sequence; bytes that are no UTF-8 come through as they are.
std::string_view trozo(std::string_view texto, std::size_t inicio, std::size_t cuantos);

/// `texto` in UTF-8: as it is if all of it is UTF-8 already, else taken as Windows-1252, in which each byte is a
/// character. The five bytes that have none there become the control characters of the same number, as Windows does.
std::string en_utf8(std::string_view texto);

}  // namespace morvane
