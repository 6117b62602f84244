#pragma once

#include <filesystem>

namespace morvane::console {

/// Where this user's key is: `morvane` in $XDG_CONFIG_HOME or ~/.config. Empty if this user has no folder of that kind.
std::filesystem::path carpeta_de_claves();

/// The program's folder: the one that the executable lies in; but where this user cannot write there, as in a
/// system-wide installation, the one that the window has made for this user, if it is there.
std::filesystem::path carpeta_del_usuario();

}  // namespace morvane::console
