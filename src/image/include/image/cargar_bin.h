#pragma once

#include <optional>

#include "image/fallo_carga.h"
#include "image/variables_grab.h"
#include "platform/plataforma.h"

namespace morvane {

/// Loads the file `ruta_archivo` into `buffer_salida`, which the caller has wiped, byte for byte from address 0 but for
/// its line ends: a CR LF, a lone CR and the end of the file behind a last line without an end become two "." each, so
/// what stands behind a lone CR moves up by one address. Lets events run before each line. After a
/// failure the image is wiped again with `dir_max` 0.
std::optional<fallo_carga> cargar_bin(plataforma& plat, Variables_grab& v);

}  // namespace morvane
