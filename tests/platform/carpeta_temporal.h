#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace morvane::prueba {

/// An empty folder that goes when the test ends.
class carpeta_temporal {
 public:
  carpeta_temporal() {
    std::string modelo = (std::filesystem::temp_directory_path() / "morvane-prueba-XXXXXX").native();
    if (::mkdtemp(modelo.data()) == nullptr) throw std::filesystem::filesystem_error(modelo, {});
    ruta_ = modelo;
  }
  carpeta_temporal(const carpeta_temporal&) = delete;
  carpeta_temporal& operator=(const carpeta_temporal&) = delete;
  ~carpeta_temporal() { std::filesystem::remove_all(ruta_); }

  const std::filesystem::path& ruta() const { return ruta_; }

  std::filesystem::path escribir(const std::filesystem::path& nombre, std::string_view contenido) const {
    const std::filesystem::path ruta = ruta_ / nombre;
    std::filesystem::create_directories(ruta.parent_path());
    std::ofstream(ruta, std::ios::binary).write(contenido.data(), static_cast<std::streamsize>(contenido.size()));
    return ruta;
  }

  /// Number of files and folders directly in the folder.
  std::ptrdiff_t cuantos() const {
    return std::distance(std::filesystem::directory_iterator(ruta_), std::filesystem::directory_iterator());
  }

 private:
  std::filesystem::path ruta_;
};

/// Takes the rights of root away, for as long as it lives, so that permissions count.
class sin_privilegios {
 public:
  sin_privilegios() : era_(::geteuid()) {
    if (era_ == 0 && ::seteuid(nadie) != 0) throw std::runtime_error("seteuid");
  }
  sin_privilegios(const sin_privilegios&) = delete;
  sin_privilegios& operator=(const sin_privilegios&) = delete;
  ~sin_privilegios() { EXPECT_EQ(::seteuid(era_), 0); }

 private:
  static constexpr uid_t nadie = 65534;
  uid_t era_;
};

inline std::string contenido_de(const std::filesystem::path& ruta) {
  std::ifstream archivo(ruta, std::ios::binary);
  return {std::istreambuf_iterator<char>(archivo), {}};
}

}  // namespace morvane::prueba
