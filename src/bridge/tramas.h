#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace puente {

constexpr char stx = '\x02';
constexpr char etx = '\x03';
/// What stands between STX and ETX is kept up to this length and one more, by which a longer one is known.
constexpr std::size_t maximo_trama = 64;

/// Looks at what stands between STX and ETX as far as that can be done without the chip. Gives the refusal, or '0'.
char juzgar(std::string_view trama);

/// `texto` must be upper-case hexadecimal.
std::uint32_t valor_hex(std::string_view texto);
/// At least `cifras` digits.
std::string texto_hex(std::uint64_t valor, int cifras);

}  // namespace puente
