#pragma once

#include <cstdint>
#include <string>

#include "image/avance.h"
#include "image/variables_grab.h"
#include "link/enlace.h"

/// The verifications. Each expects an open bracket and, but for `comparar_flash`, a chip enabled by `habilitar_flash`.
/// A verdict is given only on replies of its own: where a wait was given up or the operation was broken off, there is
/// none, and the end of the command says so.
namespace morvane {

/// Is the flash erased? Shows the verdict, sends "D" and closes the port; the box comes first, while the chip is still
/// open, or last where all blocks have passed. Leaves the character mode.
void verificar_borrado(enlace& e, avance& a);

/// Does the flash hold what `buffer_salida` holds, by sums of whole blocks that the bridge works out? Shows the
/// verdict, sends "D" and closes the port, as above.
void verificar_sumas(enlace& e, const Variables_grab& v, avance& a);

/// Compares the flash with `buffer_salida`, 16 bytes a reading, from 0 up to the first multiple of 16 at or above
/// `hasta`. Stops at the first difference and at the user's stop. Reports its own end, but for a stop.
void comparar_flash(enlace& e, const Variables_grab& v, avance& a, std::int32_t hasta);

/// Sum of the cells `desde` to `desde` + `cuenta` of `buffer_salida`, both included, as far as they exist, as
/// upper-case hexadecimal digits without leading zeros.
std::string suma_rango(const Variables_grab& v, std::int32_t desde, std::int32_t cuenta);

}  // namespace morvane
