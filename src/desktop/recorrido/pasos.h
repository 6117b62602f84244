#pragma once

#include <filesystem>

#include "desktop/programa.h"
#include "testigo.h"

namespace morvane {

/// The whole tour. `directorio` is the program's directory, with samples, a board on its port COM1 and one that never
/// answers on COM2.
void recorrer(programa& p, testigo& t, const std::filesystem::path& directorio);

}  // namespace morvane
