#pragma once

#include <cstdint>
#include <filesystem>
#include <span>

namespace puente {

/// Fills `flash` from the file, which must hold exactly as many bytes. False, with nothing changed, if there is no such
/// file. Throws std::runtime_error with a Spanish text if it cannot be read or holds anything else.
bool cargar_flash(const std::filesystem::path& ruta, std::span<std::uint8_t> flash);

/// Replaces the file in one step. Throws std::system_error with a Spanish text; the old file is then as it was.
void guardar_flash(const std::filesystem::path& ruta, std::span<const std::uint8_t> flash);

}  // namespace puente
