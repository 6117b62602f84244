#pragma once

#include <string_view>

#include "shell/frm_principal.h"

/// The last ten firmware files: slots 1 to 10 of `historial`, the entries `men_dir_1` to `men_dir_10`, and MENU.TXT in
/// the application's directory, one quoted path a line, the oldest first.
namespace morvane {

/// Fills list and menu from MENU.TXT, if there is one with a path in it. The first ten paths get entries; an eleventh
/// and a twelfth are kept without one, and what follows is passed over, as are torn lines and what cannot be a path.
/// The user is told if the file cannot be read.
void leer_historial(frm_principal& f);

/// Enters a path behind the others, in the list, the menu and the file. A path that is there already changes nothing;
/// an eleventh drops the oldest. What another program has changed in the file meanwhile comes into the list first. An
/// empty path, and one with a double quote, a line end or a NUL, that is no UTF-8, or of more than 4095 bytes, is not
/// entered, since MENU.TXT cannot hold it. The user is told if the file cannot be written; it then stands as it was. So
/// does one that cannot be read.
void actualizar_historial(frm_principal& f, std::string_view ruta);

/// Stores a path in slot `indice`, 1 to 12, and shows it, shortened, in the entry of that number, 1 to 10.
void poner_entrada_menu(frm_principal& f, std::size_t indice, std::string_view ruta);

/// A click on the entry `men_dir_` + `numero`, 1 to 10: loads that file. Refused with a box while a command or a load
/// runs.
void men_dir_Click(frm_principal& f, std::size_t numero);

}  // namespace morvane
