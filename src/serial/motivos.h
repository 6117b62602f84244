#pragma once

#include <string>

#include "serial/transporte.h"

namespace morvane {

/// Why port `numero` could not be opened, as one line.
std::string motivo_de(int numero, const std::string& porque);

/// That the driver does not take the parameters.
std::string parametros_rechazados(const parametros_linea& linea);

}  // namespace morvane
