#pragma once

#include "desktop/ventana_qt.h"
#include "shell/frm_buffer.h"

/// What the windows of the buffers have beside their controls, as keys and in the context menu.
namespace morvane {

/// Copying of rows; going to an address and looking for bytes or text. `vista` must outlive the window that shows it.
void completar(ventana_qt& ventana, frm_buffer& vista);

/// Copying of rows.
void completar(ventana_qt& ventana, frm_buffer_comp& vista);

}  // namespace morvane
