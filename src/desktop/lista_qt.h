#pragma once

#include "platform/controles.h"

class QWidget;

namespace morvane {

/// Brings row `fila`, from 0, of the list that shows `lista` in `ventana` to the top and chooses it; the last row where
/// there are fewer. Nothing happens to an empty list.
void ir_a_fila(QWidget& ventana, const ListBox& lista, int fila);

}  // namespace morvane
