#pragma once

#include <gtest/gtest.h>

#include "apoyo/carpeta.h"
#include "apoyo/guion.h"
#include "link/enlace.h"
#include "link/esperas.h"
#include "link/puerto.h"
#include "link/tramas.h"
#include "platform/gemelo.h"
#include "platform/transporte_memoria.h"

namespace apoyo {

/// A whole frame around `contenido`, as the bridge sends it.
inline std::string marco(const std::string& contenido) {
  return "\x02" + contenido + morvane::suma_comprobacion(contenido) + "\x03";
}

/// A link with an open port and a far end by script.
struct banco_enlace : testing::Test {
  banco_enlace() {
    plat.vigilar(lejos);
    e.valores = {"57600", "n", "8", "1", "COM1", ficheros.ruta_aplicacion()};
  }
  void abrir() { ASSERT_TRUE(morvane::abrir_puerto(e)); }
  const morvane::caja& ultima() const { return plat.cajas.back(); }

  carpeta dir;
  morvane::archivos ficheros{dir.ruta()};
  morvane::gemelo plat;
  guion lejos;
  morvane::transporte_memoria linea{plat, lejos};
  morvane::MSComm serial{plat, linea};
  morvane::enlace e{plat, ficheros, serial};
};

inline const std::string hecho =
    "\x02"
    "030\x03";
inline const std::string texto_cheksum =
    "Error en la comunicación, el Cheksum ha fallado, verifique la conexión y el cableado";
inline const std::string texto_pregunta =
    "No hay respuesta del Dispositivo, verifique la conexión con el puerto.\r\n"
    "Desea intentar conectarse?, si pulsa No, se saldrá del sistema";
inline const std::string texto_interrumpida =
    "La comunicación se ha interrumpido y la operación no ha terminado. Debe repetirla";

}  // namespace apoyo
