#pragma once

#include "desktop/ventana_qt.h"
#include "shell/frm_principal.h"

namespace morvane {

/// Completes the panel of the range in the main window: while the user types, a line says what will be read, and Enter
/// reads it. Both must outlive the window's controls.
void completar(ventana_qt& ventana, panel_rango& rango);

}  // namespace morvane
