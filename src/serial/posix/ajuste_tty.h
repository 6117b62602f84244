#pragma once

#include "serial/transporte.h"

namespace morvane {

/// Sets an open terminal as a raw line without flow control: any speed, no drop of DTR when it is closed. False if the
/// driver does not take the parameters as they stand.
bool ajustar_tty(int fd, const parametros_linea& linea);

/// Asks the driver to hand characters over as they come. Not every driver has that, which is no error.
void pedir_latencia_baja(int fd);

}  // namespace morvane
