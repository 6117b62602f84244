#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "image/variables_grab.h"
#include "platform/plataforma.h"

namespace morvane {

/// What went wrong in one line of a firmware file; `motivo` is the rest of a sentence, without a full stop.
std::string fallo_de_linea(std::uint64_t numero, std::string_view motivo);
/// What is wrong with the file itself.
std::string fallo_de_archivo(std::string_view motivo);

/// Gives up what a load has stored: wipes the image and sets `dir_max` to 0. Marks stay.
void desechar_carga(Variables_grab& v);
/// Tells the user that the file of the image could not be loaded, and why.
void avisar_fallo_carga(plataforma& plat, const Variables_grab& v, const std::string& detalle);

}  // namespace morvane
