#pragma once

#include <optional>
#include <string>
#include <vector>

#include "console/firmware.h"
#include "console/guardar_firmware.h"
#include "job/objetivo.h"
#include "sesion.h"

namespace morvane::console {

/// A firmware file that was read, and what the flash holds with it.
struct imagen_leida {
  firmware archivo;
  job::objetivo que;

  std::string nombre() const;
};

/// Reads a firmware file, and tells the doubts about it. Fails if it cannot be loaded.
imagen_leida leer_imagen(const llamada& ll, const std::filesystem::path& ruta);

/// What a result says of an image: its file and the hash of what the flash holds with it.
void poner_imagen(json& datos, const imagen_leida& i);

/// Files whose contents may be in a chip.
struct candidatas {
  std::vector<std::filesystem::path> rutas;
  std::vector<job::firma> firmas;
  /// Those of the list that cannot be loaded.
  std::vector<std::filesystem::path> omitidas;
};

/// Those of the program's list of files that can be loaded, the last one first. Never fails.
candidatas de_la_lista(const llamada& ll);

/// Replaces the file at `ruta`. If that cannot be done all is as before, and the end says so.
void guardar(const std::filesystem::path& ruta, std::string_view contenido, cierre& fin);

/// The same with a firmware file of these pieces, in the format of its name; tells the doubt about it.
void guardar_piezas(const llamada& ll, const std::filesystem::path& ruta, std::span<const pieza> piezas,
                    bool bin_desde_cero, cierre& fin);

/// Fails unless a file can be made in the folder of `ruta`; `ruta` itself may not be a folder. Makes nothing.
void exigir_sitio(const std::filesystem::path& ruta);

}  // namespace morvane::console
