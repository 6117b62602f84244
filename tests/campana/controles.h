#pragma once

#include <functional>
#include <string>
#include <vector>

#include "bridge/azar.h"
#include "shell/frm_principal.h"

namespace campana {

/// Something that a user can do with a control.
struct gesto {
  std::string nombre;
  std::function<void()> hacer;
};

/// Everything that the controls of all windows offer now: entries of every menu, hidden ones included; buttons, boxes
/// and lists of the windows that are open; opening, closing and resizing the windows.
std::vector<gesto> gestos(morvane::frm_principal& f, puente::azar& a);

}  // namespace campana
