#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "apoyo/carpeta.h"
#include "image/cargar_s19.h"
#include "platform/gemelo.h"

namespace morvane {

/// What a load works on, in the state after the start of the program.
struct mundo_carga {
  mundo_carga() { limpiar_buffer_salida(v); }

  void cargar_archivo(const std::string& ruta) {
    v.ruta_archivo = ruta;
    limpiar_buffer_salida(v);
    cargar_s19(plat, v, a);
  }
  void cargar(const std::string& contenido) { cargar_archivo(carpeta.escribir("programa.s19", contenido)); }

  std::vector<std::uint8_t> celdas(std::size_t dir, std::size_t cuantas) const {
    const auto desde = v.buffer_salida.begin() + static_cast<std::ptrdiff_t>(dir);
    return {desde, desde + static_cast<std::ptrdiff_t>(cuantas)};
  }
  bool borrada() const { return std::count(v.buffer_salida.begin(), v.buffer_salida.end(), 0xFF) == total_celdas; }
  auto marcas() const { return total_celdas - std::count(v.mascara_salida.begin(), v.mascara_salida.end(), 0); }
  bool marcada(std::size_t dir) const { return v.mascara_salida.at(dir) != 0; }

  apoyo::carpeta carpeta;
  gemelo plat;
  contador_cambios cambios;
  Variables_grab v;
  avance a{cambios};
};

}  // namespace morvane
