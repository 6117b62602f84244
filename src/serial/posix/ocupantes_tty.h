#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace morvane {

/// The other programs that have the device `ruta`, links resolved, locked or open, the one that has locked it first, as
/// "nombre (pid 123)"; the first few of those that this user can see. Opens no device.
std::vector<std::string> programas_con(const std::filesystem::path& ruta);

/// The programs that keep others off the device `ruta`, links resolved, as "nombre (pid 123)", joined by commas: the
/// one that has locked it, else all that have it open. Empty if this user can see none.
std::string ocupantes(const std::filesystem::path& ruta);

}  // namespace morvane
