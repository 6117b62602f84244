#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "apoyo/carpeta.h"
#include "image/cargar_s19.h"
#include "platform/gemelo.h"

namespace morvane {

using bytes = std::vector<std::uint8_t>;

/// What a load works on, in the state after the start of the program.
struct mundo_carga {
  mundo_carga() { limpiar_buffer_salida(v); }

  void cargar_archivo(const std::string& ruta) {
    v.ruta_archivo = ruta;
    limpiar_buffer_salida(v);
    cargar_s19(plat, v, a);
  }
  void cargar(const std::string& contenido) { cargar_archivo(carpeta.escribir("programa.s19", contenido)); }
  /// Loads one record alone, with the address that its type announces.
  std::optional<std::string> registro(std::string_view linea) {
    return cargar_registro_s(v, linea, linea.size(), static_cast<std::uint8_t>((linea[1] - '0') * 2 + 2));
  }

  bytes celdas(long dir, std::size_t cuantas) const {
    return {v.buffer_salida.begin() + dir, v.buffer_salida.begin() + dir + static_cast<long>(cuantas)};
  }
  bool borrada() const { return std::ranges::count(v.buffer_salida, 0xFF) == total_celdas; }
  auto marcas(long desde = 0, long hasta = total_celdas) const {
    return hasta - desde - std::count(v.mascara_salida.begin() + desde, v.mascara_salida.begin() + hasta, 0);
  }

  apoyo::carpeta carpeta;
  gemelo plat;
  contador_cambios cambios;
  Variables_grab v;
  avance a{cambios};
};

}  // namespace morvane
