#pragma once

namespace morvane {

/// Removes from the folder open as `carpeta` the provisional files that processes have left there which no longer run.
void barrer_provisionales(int carpeta);

}  // namespace morvane
