#pragma once

#include "link/enlace.h"

namespace morvane {

/// Takes what the serial control has delivered. In the character mode it assembles a frame, tests its checksum, decodes
/// a status reply and shows what the chip or the bridge complains of; in a fixed-length mode it only keeps the slice
/// that the mode asks for. A reply with a bad checksum, a second RESET and the fourth box of one operation break the
/// operation off.
void serial_OnComm(enlace& e);

/// Shows the message that belongs to the code character of a refused command; nothing for a code without one. True if
/// a box was shown.
bool mostrar_error_chip(enlace& e, char codigo);

}  // namespace morvane
