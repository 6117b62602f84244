#pragma once

#include <filesystem>

#include "desktop/programa.h"
#include "testigo.h"

namespace morvane {

/// The steps of the tour, in order. `directorio` is the program's directory, with a sample and a board on its port.
void recorrer(programa& p, testigo& t, const std::filesystem::path& directorio);

}  // namespace morvane
