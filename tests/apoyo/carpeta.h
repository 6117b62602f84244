#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

namespace apoyo {

/// A directory of its own for a test, removed with all that is in it.
class carpeta {
 public:
  carpeta() {
    std::random_device azar;
    const std::string nombre = "morvane-" + std::to_string(azar()) + "-" + std::to_string(azar());
    ruta_ = std::filesystem::canonical(std::filesystem::temp_directory_path()) / nombre;
    std::filesystem::create_directory(ruta_);
  }
  ~carpeta() {
    std::error_code sin_importancia;
    std::filesystem::remove_all(ruta_, sin_importancia);
  }
  carpeta(const carpeta&) = delete;
  carpeta& operator=(const carpeta&) = delete;

  const std::filesystem::path& ruta() const { return ruta_; }
  /// Where `nombre` lies: here, or, below "unidades/c", on the drive C: of a host that has one.
  std::filesystem::path en(const std::string& nombre) const {
    constexpr std::string_view unidad = "unidades/c";
    const bool hay_unidades = std::filesystem::path::preferred_separator == '\\';
    if (!hay_unidades || !nombre.starts_with(unidad)) return ruta_ / nombre;
    return "C:" + nombre.substr(unidad.size());
  }
  std::string escribir(const std::string& nombre, const std::string& contenido) const {
    const std::filesystem::path ruta = en(nombre);
    std::filesystem::create_directories(ruta.parent_path());
    std::ofstream(ruta, std::ios::binary) << contenido;
    return ruta.string();
  }
  std::string leer(const std::string& nombre) const {
    std::ifstream f(en(nombre), std::ios::binary);
    return {std::istreambuf_iterator<char>(f), {}};
  }

 private:
  std::filesystem::path ruta_;
};

}  // namespace apoyo
