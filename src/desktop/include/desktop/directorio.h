#pragma once

#include <filesystem>

namespace morvane {

/// The application's directory, which exists: the program's own where it can be written, else one of the user's, which
/// is filled on the first start with what a new installation has. A QApplication with its name set must exist.
std::filesystem::path directorio_aplicacion();

/// Makes `destino` out of the parts of `origen` that belong to a user, writable for its owner. Nothing happens where
/// `destino` exists; after a failure, thrown as filesystem_error, it does not. Of several programs that do this at once
/// one does it, and the others wait for that.
void sembrar(const std::filesystem::path& origen, const std::filesystem::path& destino);

}  // namespace morvane
