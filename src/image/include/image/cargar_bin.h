#pragma once

#include "image/variables_grab.h"
#include "platform/plataforma.h"

namespace morvane {

/// Loads the file `ruta_archivo` into `buffer_salida`, which the caller has wiped, byte for byte from address 0 but for
/// its line ends: a CR LF, a lone CR and the end of the file behind a last line without an end become two "." each, so
/// what stands behind a lone CR moves up by one address. Lets events run before each line. Silent when it succeeds;
/// otherwise one box names file, line and reason, and the image is wiped again with `dir_max` 0.
void cargar_bin(plataforma& plat, Variables_grab& v);

}  // namespace morvane
