#pragma once

#include <filesystem>
#include <fstream>
#include <string>

namespace morvane {

/// The first line of a file of a few words, as the kernel tells its facts; empty if it cannot be read.
inline std::string renglon(const std::filesystem::path& fichero) {
  std::ifstream entrada(fichero);
  std::string texto;
  std::getline(entrada, texto);
  return texto;
}

}  // namespace morvane
