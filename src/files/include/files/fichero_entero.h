#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <variant>

#include "files/archivos.h"
#include "files/causa_archivo.h"

namespace morvane {

/// The whole of a regular file of the user's, of up to `limite` bytes, or why it cannot be had. A file that changes
/// meanwhile is an error. The path is the host's own.
std::variant<std::string, causa_archivo> leer_entero(const std::filesystem::path& ruta, std::uint64_t limite);

/// Replaces the file at `ruta`, or the one that it links to, by `contenido`: after 0 it holds the new content, after an
/// error the old one, whole, or nothing if there was none. A crash in the middle leaves one or the other. Only where
/// the very last step fails, bringing the folder to the disk, does the new content stand there after an error. The path
/// is the host's own.
error_archivo reemplazar_archivo(const std::filesystem::path& ruta, std::string_view contenido);

}  // namespace morvane
