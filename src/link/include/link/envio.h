#pragma once

#include <string_view>

#include "link/enlace.h"

namespace morvane {

/// Sends `comando` (1 to 15 characters, fields padded by the caller) as one frame: clears `respuesta_lista` and
/// `datos_listos`, notes `ultimo_comando`, and puts the frame on the port, which must be open. Does not wait. In an
/// operation that is broken off nothing goes out but a "D" that is still allowed.
void enviar_comando(enlace& e, std::string_view comando);

/// The same; the frame also goes to `nfile`, CR LF behind it, before it goes to the port. A file that is not open is
/// passed over, and one that takes no more is closed.
void enviar_comando_log(enlace& e, std::string_view comando, fichero& nfile);

}  // namespace morvane
