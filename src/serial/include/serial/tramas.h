#pragma once

#include <optional>
#include <string>
#include <string_view>

/// The frames on the line, in both directions: STX, a text of 7-bit characters, two checksum digits, ETX.
namespace morvane {

constexpr char STX = '\x02';
constexpr char ETX = '\x03';

/// The two checksum digits of `texto`: the last two digits of the upper-case hexadecimal sum of its characters.
std::string suma_comprobacion(std::string_view texto);

/// `texto`, of 1 character or more, as a whole frame.
std::string en_trama(std::string_view texto);

/// True if the last two characters of `trama`, which is what stood between STX and ETX, are the checksum of all before
/// them, letters in upper case. A frame of fewer than three characters fails.
bool validar_checksum(std::string_view trama);

/// A reply, taken apart. The view is one of the text that it was read from.
struct respuesta_leida {
  /// '0' carried out, '1' to '9' refused; another one is no answer, or stands in front of a RESET.
  char codigo = '\0';
  /// What stands between code and checksum.
  std::string_view datos;

  bool hecha() const { return codigo == '0'; }
  bool rechazada() const { return codigo >= '1' && codigo <= '9'; }
  /// The chip has started anew.
  bool es_reset() const { return !hecha() && datos.starts_with("RESET"); }
};

/// Reads what stood between STX and ETX. Nothing if its checksum is wrong.
std::optional<respuesta_leida> leer_respuesta(std::string_view trama);

}  // namespace morvane
