#pragma once

#include <cstdio>
#include <filesystem>

namespace morvane::console {

/// Opens a file anew for text that is written as it stands, and that no program started from here gets to see. Null,
/// with the reason in `errno`, if that cannot be.
std::FILE* abrir_para_escribir(const std::filesystem::path& ruta);

}  // namespace morvane::console
