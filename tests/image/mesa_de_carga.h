#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "apoyo/carpeta.h"
#include "image/cargar_bin.h"
#include "image/cargar_s19.h"
#include "platform/gemelo.h"

using namespace morvane;
namespace fs = std::filesystem;
using bytes = std::vector<std::uint8_t>;

struct carga : testing::Test {
  void cargar_archivo(const std::string& ruta, bool binario) {
    limpiar_buffer_salida(v);
    plat.cajas.clear();
    plat.paciencia = total_celdas;
    v.dir_max = 7;
    v.ruta_archivo = ruta;
    binario ? cargar_bin(plat, v) : cargar_s19(plat, v, a);
  }
  void s19(const std::string& texto) { cargar_archivo(dir.escribir("f", texto), false); }
  void bin(const std::string& texto) { cargar_archivo(dir.escribir("f", texto), true); }
  void espera_fallo(const std::string& detalle) const {
    const std::string texto = "No se ha podido cargar el archivo:\r\n" + v.ruta_archivo + "\r\n" + detalle;
    EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención", texto, botones::Aceptar, icono::critico}}));
    EXPECT_TRUE(vacia() && a.Progress.Value == 0) << "nothing is half loaded";
  }
  bool vacia() const { return v.dir_max == 0 && std::ranges::count(v.buffer_salida, 0xFF) == total_celdas; }
  auto marcas() const { return std::ranges::count(v.mascara_salida, 1); }
  bytes celdas(long desde, long cuantas) const {
    return {v.buffer_salida.begin() + desde, v.buffer_salida.begin() + desde + cuantas};
  }

  apoyo::carpeta dir;
  gemelo plat;
  contador_cambios cambios;
  Variables_grab v;
  avance a{cambios};
};
