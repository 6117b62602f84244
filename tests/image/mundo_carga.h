#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string>

#include "image/cargar_s19.h"
#include "platform/gemelo.h"

namespace morvane {

/// A directory that goes with its owner.
struct carpeta_temporal {
  carpeta_temporal() : ruta(testing::TempDir() + "imagenXXXXXX") {
    if (mkdtemp(ruta.data()) == nullptr) throw std::runtime_error("no temporary directory");
  }
  ~carpeta_temporal() { std::filesystem::remove_all(ruta); }
  carpeta_temporal(const carpeta_temporal&) = delete;
  carpeta_temporal& operator=(const carpeta_temporal&) = delete;
  std::string ruta;
};

/// What a load works on, in the state after the start of the program.
struct mundo_carga {
  mundo_carga() { limpiar_buffer_salida(v); }

  void cargar_archivo(const std::string& ruta) {
    v.ruta_archivo = ruta;
    limpiar_buffer_salida(v);
    cargar_s19(plat, v, a);
  }
  void cargar(const std::string& contenido) {
    const std::string ruta = carpeta.ruta + "/programa.s19";
    std::ofstream(ruta, std::ios::binary) << contenido;
    cargar_archivo(ruta);
  }

  std::vector<std::uint8_t> celdas(std::size_t dir, std::size_t cuantas) const {
    const auto desde = v.buffer_salida.begin() + static_cast<std::ptrdiff_t>(dir);
    return {desde, desde + static_cast<std::ptrdiff_t>(cuantas)};
  }
  bool borrada() const { return std::count(v.buffer_salida.begin(), v.buffer_salida.end(), 0xFF) == total_celdas; }
  auto marcas() const { return total_celdas - std::count(v.mascara_salida.begin(), v.mascara_salida.end(), 0); }
  bool marcada(std::size_t dir) const { return v.mascara_salida.at(dir) != 0; }

  carpeta_temporal carpeta;
  gemelo plat;
  contador_cambios cambios;
  Variables_grab v;
  avance a{cambios};
};

}  // namespace morvane
