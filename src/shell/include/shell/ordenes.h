#pragma once

#include "shell/frm_principal.h"

/// The commands of the user on the chip. Each is a bracket of its own: open the port, "A", the work, "D", close the
/// port. Each reports to the user itself and leaves the port closed and the reception in the character mode.
namespace morvane {

/// True if a program is loaded; otherwise the user is told to load one.
bool hay_programa(frm_principal& f);

void men_borrar_t_Click(frm_principal& f);
void men_prog_t_Click(frm_principal& f);

/// Ends the program at once, without a question.
void men_salir_Click(frm_principal& f);

}  // namespace morvane
