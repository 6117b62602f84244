#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>

namespace morvane {

/// How a serial line is set.
struct parametros_linea {
  /// Bits a second, 50 to 4,000,000.
  int velocidad = 57600;
  /// 'n' none, 'e' even, 'o' odd, 'm' mark, 's' space.
  char paridad = 'n';
  /// 5 to 8.
  int bits_datos = 8;
  /// Stop bits times two: 2, 3 (with five data bits) or 4.
  int medios_bits_parada = 2;
  bool operator==(const parametros_linea&) const = default;
};

/// What a byte takes on the line: the start bit, its own eight and the stop bit.
constexpr int bits_por_caracter = 10;

/// How long `caracteres` bytes take at `velocidad` bits a second, cut to a microsecond; 0 where there is no speed (<=
/// 0).
constexpr std::chrono::microseconds tiempo_en_la_linea(std::int64_t caracteres, int velocidad) {
  return std::chrono::microseconds{velocidad <= 0 ? 0 : caracteres * bits_por_caracter * 1'000'000 / velocidad};
}

/// Reads line parameters out of a text such as "57600n81": digits of the speed, the letter of the parity in either
/// case, the data bits, the stop bits ("1", "1.5" or "2"). Commas and blanks between the fields are passed over, so
/// "57600,N,8,1" says the same. Gives nothing if the text is anything else or asks for what no line can do.
std::optional<parametros_linea> leer_parametros(std::string_view texto);

}  // namespace morvane
