#pragma once

#include <windows.h>

#include <filesystem>
#include <string>

#include "serial/causa_puerto.h"

namespace morvane {

/// \\.\COMn, whether there is such a port or not.
std::filesystem::path dispositivo_com(int numero);

/// What the host calls the device behind COMn, such as \Device\Serial0; empty if there is none. Opens nothing.
std::string aparato_tras(int numero);

/// What the Device Manager calls the port `puerto`, "COM3"; empty if it does not know it.
std::string nombre_de_com(const std::string& puerto);

/// Why opening the port `numero` failed with `error` of the host.
causa_puerto causa_de_apertura(int numero, DWORD error);

}  // namespace morvane
