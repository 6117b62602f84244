#pragma once

#include <gtest/gtest.h>

#include "apoyo/carpeta.h"
#include "apoyo/placa_lejos.h"
#include "platform/gemelo.h"
#include "shell/frm_principal.h"
#include "shell/ordenes.h"
#include "shell/proyecto.h"

namespace apoyo {

inline const std::string ajustes_buenos = "\"57600\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n";

/// The whole program without a desktop: the main window on the twin, the simulated board at the end of the line.
struct banco_principal : testing::Test {
  banco_principal() {
    std::filesystem::create_directories(dir.ruta() / "unidades/c/Datos/TORVAX-m68k");
    dir.escribir("SETTINGS.TXT", ajustes_buenos);
    plat.vigilar(lejos);
  }
  void empezar() {
    Form_Load(f);
    lejos.comandos.clear();
    plat.cajas.clear();
  }
  /// Chooses a file through the open command.
  void abrir_archivo(const std::string& nombre, const std::string& contenido) {
    plat.elegir(dir.escribir(nombre, contenido));
    f.menu.men_abrir.Click();
  }
  std::vector<std::string> textos() const {
    std::vector<std::string> lista;
    for (const morvane::caja& c : plat.cajas) lista.push_back(c.texto);
    return lista;
  }
  bool en_reposo() const {
    return !f.serial.PortOpen() && f.serial.InputLen() == 1 && f.serial.RThreshold() == 1 &&
           !f.link.spera_resp.Enabled() && f.ordenes == 0;
  }

  carpeta dir;
  morvane::archivos ficheros{dir.ruta()};
  morvane::gemelo plat;
  placa_lejos lejos;
  morvane::transporte_memoria linea{plat, lejos};
  morvane::Variables_grab v;
  morvane::frm_principal f{plat, ficheros, linea, v};
};

inline const std::string ocho_bytes = "S10B01000102030405060708CF\r\nS9030000FC\r\n";

}  // namespace apoyo
