#pragma once

#include <string>

#include "shell/frm_principal.h"

namespace morvane {

/// What stands under the text of a box about `de_que`, line by line: first a mark and a word that tell how it has gone,
/// then what is known of it, then what there is to do. Empty if there is nothing to add.
std::string detalles(const frm_principal& f, const hechos& de_que);

/// The same of the load that has just ended.
std::string detalles_de_carga(const frm_principal& f);

}  // namespace morvane
