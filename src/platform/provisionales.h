#pragma once

#include <sys/types.h>

#include <string>

/// The files in which new contents stand until they take the place of the old ones.
namespace morvane {

/// Name of the `intento`-th such file of the process `pid`.
std::string nombre_provisional(pid_t pid, unsigned intento);

/// Removes from the folder open as `carpeta` what processes have left there that no longer run. Such a file is an hour
/// old at least: a process may also run out of sight, in another container or on another machine.
void barrer_provisionales(int carpeta);

}  // namespace morvane
