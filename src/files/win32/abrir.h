#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "platform/manejador.h"

namespace morvane {

/// What opening gave: a handle and 0, or none and the number of the error as in <cerrno>.
struct apertura {
  manejador archivo;
  int error = 0;
};

/// Opens a regular file with access and disposition as for CreateFileW, never anything else: a folder gives EISDIR, a
/// device ENODEV without being touched. Others may read it; they may write to it if `compartido`.
apertura abrir_normal(const std::filesystem::path& ruta, DWORD acceso, DWORD disposicion, bool compartido);

/// Writes all of `datos`. 0, or the number of the error, after which a part may have been written.
int escribir_todo(HANDLE archivo, std::string_view datos);

/// Cuts an open file off behind `largo` bytes; where it is written next is left there.
bool cortar(HANDLE archivo, std::int64_t largo);

}  // namespace morvane
