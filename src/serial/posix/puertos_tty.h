#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <optional>

#include "serial/causa_puerto.h"

namespace morvane {

/// The link that decides where port `numero` leads, if it is there.
std::filesystem::path enlace_de(const std::filesystem::path& directorio, int numero);

/// The character device that port `numero` leads to, links resolved; empty if it leads to none, or by a link that is
/// older than the pseudo-terminal behind it. `directorio` is the program's directory. Opens nothing.
std::filesystem::path dispositivo_puerto(const std::filesystem::path& directorio, int numero);

/// True if what a file is says that it is the near end of a pseudo-terminal.
bool es_pseudoterminal(const struct stat& que);

/// Opens a character device for both directions, without waiting and without making it the controlling terminal. The
/// descriptor, or -1 with the reason in errno (ENOTTY if it is no terminal).
int abrir_dispositivo(const std::filesystem::path& ruta);

/// Takes an open terminal for this program alone. False, with the reason in errno, if not: EBUSY if somebody else has
/// it.
bool tomar_en_exclusiva(int fd);
/// Gives back what `tomar_en_exclusiva` took, as far as closing does not.
void dejar_exclusiva(int fd);

/// Why port `numero` leads to no device, which was found out before.
causa_puerto causa_de_falta(const std::filesystem::path& directorio, int numero);
/// Why the path `ruta` leads to no device; nothing if it does.
std::optional<causa_puerto> causa_de_camino(const std::filesystem::path& ruta);
/// Why opening the device `ruta` failed with `error`. The port's number is left to the caller.
causa_puerto causa_de_apertura(const std::filesystem::path& ruta, int error);

}  // namespace morvane
