#pragma once

#include <filesystem>
#include <string>

namespace morvane {

/// The programs that keep others off the device `ruta`, links resolved, as "nombre (pid 123)", joined by commas: the
/// one that has locked it, else all that have it open, the first few. Empty if this user can see none. Opens no device.
std::string ocupantes(const std::filesystem::path& ruta);

}  // namespace morvane
