#pragma once

#include <string>
#include <string_view>

#include "bridge/placa.h"

namespace puente {

/// One line of a trace, without a line end: seconds with six places, the direction, and the characters as they were on
/// the wire, where STX and ETX read "<STX>" and "<ETX>"; others that do not print, and "<" itself, "<hh>".
std::string renglon_de_traza(char direccion, std::string_view trama, instante cuando);

}  // namespace puente
