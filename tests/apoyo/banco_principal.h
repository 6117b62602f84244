#pragma once

#include "apoyo/banco.h"
#include "apoyo/placa_lejos.h"
#include "shell/frm_principal.h"
#include "shell/historial.h"
#include "shell/ordenes.h"
#include "shell/proyecto.h"

namespace apoyo {

inline const std::string ajustes_buenos = "\"57600\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n";
inline const std::string ocho_bytes = "S10B01000102030405060708CF\r\nS9030000FC\r\n";
inline const std::string texto_cargado = "Ha terminado de cargar el archivo";
inline const std::string texto_en_curso =
    "Hay una operación en curso. Espere a que termine, o deténgala, antes de abrir un archivo";

/// The whole program without a desktop: the main window on the twin, the simulated board at the end of the line.
struct banco_principal : banco<placa_lejos> {
  banco_principal() {
    dir.escribir("unidades/c/Datos/TORVAX-m68k/memoria.txt", "");
    dir.escribir("SETTINGS.TXT", ajustes_buenos);
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
  /// The list of files of a program that starts now.
  std::vector<std::string> lista_guardada() {
    frm_principal otra(plat, ficheros, linea, v);
    otra.link.valores.ruta_aplicacion = ficheros.ruta_aplicacion();
    leer_historial(otra);
    std::vector<std::string> rutas(otra.historial.begin(), otra.historial.end());
    std::erase(rutas, "");
    EXPECT_EQ(otra.menu.separa_1.Visible.valor(), !rutas.empty());
    return rutas;
  }
  bool en_reposo() const {
    return !f.serial.PortOpen() && f.serial.InputLen() == 1 && f.serial.RThreshold() == 1 &&
           !f.link.spera_resp.Enabled() && f.ordenes == 0;
  }

  Variables_grab v;
  frm_principal f{plat, ficheros, linea, v};
};

}  // namespace apoyo
