#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "serial/parametros_linea.h"

namespace morvane {

/// Why a port leads to no device, cannot be opened, or cannot be made to lead elsewhere, with the facts that whoever
/// says so needs. A fact that a class does not name is empty.
struct causa_puerto {
  enum class clase : std::uint8_t {
    /// The program's directory is not at `ruta` any more, and with it the links.
    carpeta_movida,
    /// There is no link `enlace`, and no device that the port has of its own.
    sin_enlace,
    /// There is neither the device `ruta` nor the link `enlace`.
    sin_nada,
    /// `enlace` leads to `ruta`, which does not exist.
    enlace_roto,
    /// `enlace` is older than the pseudo-terminal `ruta`, which now is of `quien`, empty if that cannot be seen.
    enlace_pasado,
    /// No permission to reach what is behind `ruta`.
    camino_cerrado,
    /// The host has no such port (Windows).
    no_existe,
    /// What the port leads to, `ruta`, is no serial device; by its kind, or as opening it has shown.
    no_es_dispositivo,
    no_es_serie,
    /// There is nothing behind the device `ruta`.
    sin_aparato,
    /// Programs have the device `ruta`: `quien`, empty if that cannot be seen.
    ocupado,
    /// This user may not open `ruta`: the group `quien` may, or the user `quien` alone, or nobody knows who.
    falta_grupo,
    solo_de_usuario,
    sin_permiso,
    /// The driver of `ruta` does not take the parameters `linea`.
    parametros,
    /// The host's number `error`: as in <cerrno> from opening `ruta` or from changing the link `enlace`; Windows' own.
    sistema,
    enlace_fijo,
    windows,
    /// Something that is no link stands at `enlace`.
    no_es_enlace,
    /// Ports have no links here: their numbers are the host's own.
    numero_fijo,
  };
  clase cual = clase::no_existe;
  /// 0 to 9, or `sin_numero` for a device that was named by its path.
  static constexpr int sin_numero = -1;
  int puerto = 0;
  std::filesystem::path ruta{}, enlace{};
  std::string quien{};
  int error = 0;
  parametros_linea linea{};
  bool operator==(const causa_puerto&) const = default;
};

}  // namespace morvane
