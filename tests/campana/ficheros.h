#pragma once

#include <map>
#include <string>
#include <vector>

#include "apoyo/carpeta.h"
#include "bridge/azar.h"

namespace campana {

/// What a firmware file is to leave in the image.
struct contenido {
  std::map<std::int32_t, std::uint8_t> bytes;
  std::int32_t dir_max = 0;
  /// The file can be loaded; otherwise the image stays empty.
  bool vale = true;
};

/// Firmware files in a directory, made by lot: S-records of all three types, binary files, damaged ones, names that
/// lead nowhere.
class ficheros_al_azar {
 public:
  ficheros_al_azar(const apoyo::carpeta& dir, puente::azar& a);
  const std::string& alguno(puente::azar& a) const { return a.uno<std::string>(rutas_); }
  /// Null for a path that is none of these.
  const contenido* de(const std::string& ruta) const;

 private:
  std::vector<std::string> rutas_;
  std::map<std::string, contenido> contenidos_;
};

}  // namespace campana
