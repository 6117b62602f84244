#pragma once

#include <cstdint>
#include <functional>

#include "desktop/ventana_qt.h"
#include "shell/frm_buffer.h"

/// What the windows of the buffers have beside their controls, as keys and in the context menu.
namespace morvane {

/// Copying of rows; going to an address and looking for bytes or text; what is said in place of rows. The list opens at
/// the first row that is known. `vista` must outlive the window that shows it.
void completar(ventana_qt& ventana, frm_buffer& vista);

/// Copying of rows. `al_ver` gets the address of the difference that the user wants to see in the dumps.
void completar(ventana_qt& ventana, frm_buffer_comp& vista, std::function<void(std::int32_t dir)> al_ver);

/// Which half of the screen a dump takes at first.
enum class mitad { izquierda, derecha };

/// Places a window of dumps, before it appears, so that it stands beside its twin of the other half; above and below
/// each other where the screen is too narrow; and where it is too low for that as well, so that both titles are seen.
void poner_en_su_mitad(ventana_qt& ventana, mitad cual);

/// Brings the row of address `dir` of a dump that is shown to the top and marks the byte. Nothing happens to an empty
/// one.
void senalar_direccion(ventana_qt& ventana, frm_buffer& vista, std::int32_t dir);

}  // namespace morvane
