#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace apoyo {

/// A directory of its own for a test, removed with all that is in it.
class carpeta {
 public:
  carpeta() {
    std::string plantilla = (std::filesystem::temp_directory_path() / "morvane-XXXXXX").string();
    if (mkdtemp(plantilla.data()) == nullptr) throw std::runtime_error("mkdtemp");
    ruta_ = std::filesystem::canonical(plantilla);
  }
  ~carpeta() {
    std::error_code sin_importancia;
    std::filesystem::remove_all(ruta_, sin_importancia);
  }
  carpeta(const carpeta&) = delete;
  carpeta& operator=(const carpeta&) = delete;

  const std::filesystem::path& ruta() const { return ruta_; }
  std::string escribir(const std::string& nombre, const std::string& contenido) const {
    const std::filesystem::path ruta = ruta_ / nombre;
    std::filesystem::create_directories(ruta.parent_path());
    std::ofstream(ruta, std::ios::binary) << contenido;
    return ruta.string();
  }
  std::string leer(const std::string& nombre) const {
    std::ifstream f(ruta_ / nombre, std::ios::binary);
    return {std::istreambuf_iterator<char>(f), {}};
  }

 private:
  std::filesystem::path ruta_;
};

}  // namespace apoyo
