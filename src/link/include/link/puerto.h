#pragma once

#include <optional>
#include <string_view>

#include "link/enlace.h"

namespace morvane {

/// Opens the port of the settings. After True it is ready and this program's alone, and a new operation has begun:
/// nothing is broken off. After False the user has seen why, and nothing has changed; that is also how a second
/// command is refused while one holds the port.
bool abrir_puerto(enlace& e);

/// Closes the port and disables the watchdog. Does nothing to a closed port.
void cerrar_puerto(enlace& e);

/// Reads "SETTINGS.TXT". Without the file the settings stay as they are, and so they do when it cannot be read, which
/// the user is told; an empty one gives the defaults and is written anew. Fields that are missing, that hold a double
/// quote, a NUL or more than 255 bytes take their defaults.
void leer_ajustes(enlace& e);

/// Writes "SETTINGS.TXT" if it exists and there are settings to write: when the port dialog saves, and whenever a
/// firmware file is opened. The user is told if that fails; the old file then stands.
void guardar_ajustes(enlace& e);

/// The settings as they stand in "SETTINGS.TXT" now; nothing if it is missing or cannot be read.
std::optional<campos_ajustes> ajustes_guardados(const enlace& e);

/// True if there is no "SETTINGS.TXT".
bool faltan_ajustes(const enlace& e);

/// Makes "SETTINGS.TXT" where there is none, with speed and port as they are in force and defaults for what is not,
/// and reads it. The user is told if it cannot be made; the settings are then as before. One that is there is only
/// read.
void crear_ajustes(enlace& e);

enum class modo_fichero { leer = 0, escribir = 1, anadir = 2 };

/// Opens the text file `nombre` in the directory `ruta`, which ends in a backslash. A missing file gives nothing and no
/// message, but for `escribir`, which creates it (`anadir` does not). Any error is shown and gives nothing.
std::optional<fichero> abrir_fichero(enlace& e, std::string_view ruta, std::string_view nombre, modo_fichero modo);

}  // namespace morvane
