// A settings file of any content: it is read without harm and left alone, and its port opens or is refused.

#include <cstdlib>

#include "apoyo/carpeta.h"
#include "apoyo/guion.h"
#include "link/enlace.h"
#include "link/puerto.h"
#include "platform/gemelo.h"

using namespace morvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  static apoyo::carpeta dir;
  const std::string texto(reinterpret_cast<const char*>(datos), largo);
  dir.escribir("SETTINGS.TXT", texto);
  archivos ficheros(dir.ruta());
  gemelo plat;
  apoyo::guion lejos;
  transporte_memoria linea(plat, lejos);
  MSComm serial(plat, linea);
  enlace e(plat, ficheros, serial);
  e.valores.ruta_aplicacion = ficheros.ruta_aplicacion();
  leer_ajustes(e);
  if (abrir_puerto(e)) {
    const parametros_linea& p = linea.linea();
    if (p.velocidad < 50 || p.bits_datos < 5 || p.bits_datos > 8) std::abort();
  } else if (plat.cajas.empty()) {
    std::abort();
  }
  if (!texto.empty() && dir.leer("SETTINGS.TXT") != texto) std::abort();
  return 0;
}
