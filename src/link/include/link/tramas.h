#pragma once

#include <string>
#include <string_view>

#include "link/enlace.h"

namespace morvane {

constexpr char STX = '\x02';
constexpr char ETX = '\x03';

/// The two checksum digits of `texto`: the last two digits of the upper-case hexadecimal sum of its characters.
std::string suma_comprobacion(std::string_view texto);

/// Sends `comando` (1 to 15 characters, fields padded by the caller) as one frame: clears `respuesta_lista` and
/// `datos_listos`, notes `ultimo_comando`, and puts STX, command, checksum and ETX on the port, which must be open.
/// Does not wait. In an operation that is broken off nothing goes out but a "D" that is still allowed.
void enviar_comando(enlace& e, std::string_view comando);

/// The same; the frame also goes to `nfile`, CR LF behind it, before it goes to the port. A file that is not open is
/// passed over, and one that takes no more is closed.
void enviar_comando_log(enlace& e, std::string_view comando, fichero& nfile);

/// True if the last two characters of `trama`, which is what stood between STX and ETX, are the checksum of all before
/// them, letters in upper case. A frame of fewer than three characters fails.
bool validar_checksum(std::string_view trama);

}  // namespace morvane
