#pragma once

#include <filesystem>
#include <string>

namespace morvane {

/// What port `numero` leads to, links resolved; empty if to nothing. `directorio` is the program's directory.
std::filesystem::path destino_puerto(const std::filesystem::path& directorio, int numero);

/// The link that decides where port `numero` leads, if it is there.
std::filesystem::path enlace_de(const std::filesystem::path& directorio, int numero);

/// True if `ruta` is a character device. Opens nothing.
bool es_dispositivo(const std::filesystem::path& ruta);

/// Opens a character device for both directions, without waiting and without making it the controlling terminal. The
/// descriptor, or -1 with the reason in errno (ENOTTY if it is no terminal).
int abrir_dispositivo(const std::filesystem::path& ruta);

/// Takes an open terminal for this program alone. False, with the reason in errno, if not: EBUSY if somebody else has
/// it.
bool tomar_en_exclusiva(int fd);
/// Gives back what `tomar_en_exclusiva` took, as far as closing does not.
void dejar_exclusiva(int fd);

/// Why port `numero` leads to no device, and why opening the device `ruta` failed with `error`: in Spanish, without a
/// line end, with what the user can do about it where that is known.
std::string explicar_falta(const std::filesystem::path& directorio, int numero);
std::string explicar_apertura(const std::filesystem::path& ruta, int error);

}  // namespace morvane
