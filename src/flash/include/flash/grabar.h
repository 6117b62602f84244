#pragma once

#include "image/avance.h"
#include "image/variables_grab.h"
#include "link/enlace.h"

namespace morvane {

/// Erases the flash and goes on with `programar_flash` if that succeeded.
void borrar_y_programar(enlace& e, Variables_grab& v, avance& a);

/// Decides whether to write: a protected flash is erased once more if the user agrees; any other is enabled for
/// writing. Shows its own messages.
void programar_flash(enlace& e, Variables_grab& v, avance& a);

/// Writes the image in groups of four bytes from its first marked address, rounded down, up to `dir_max`, and keeps the
/// journal. Ends at `dir_max`, between two groups at the user's stop, or when the operation is broken off; always
/// leaves the character mode, the bar at 0, `cancelar` False and `dir_max_grabada` equal to `dir_max`.
void grabar_flash(enlace& e, Variables_grab& v, avance& a);

}  // namespace morvane
