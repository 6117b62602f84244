#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "image/avance.h"
#include "image/fallo_carga.h"
#include "image/variables_grab.h"
#include "platform/plataforma.h"

namespace morvane {

/// Loads the S-record file `ruta_archivo` into `buffer_salida`, which the caller has wiped, as far as the user does not
/// stop it. After a failure the image is wiped again with `dir_max` 0, so that half a file is never programmed. The bar
/// and `cancelar` stay as the load has left them until the user has been told. Lines that are no S1, S2 or S3 record
/// are passed over; counts, checksums and the digits of the data are not judged.
std::optional<fallo_carga> cargar_s19(plataforma& plat, Variables_grab& v, avance& a);

/// Stores the data of one S1, S2 or S3 line and zeroes the chip's configuration field. `ancho_dir` is the number of
/// address digits: 4, 6 or 8. `largo_linea` is the true length of the line, of which `linea` may be only the beginning.
/// Gives what is wrong, without the line's number, if it goes past a limit; then nothing was stored.
std::optional<fallo_carga> cargar_registro_s(Variables_grab& v, std::string_view linea, std::uint64_t largo_linea,
                                             std::uint8_t ancho_dir);

}  // namespace morvane
