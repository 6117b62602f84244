// A settings file of any content: it is read without harm and left alone, its port opens or is refused, and what is
// saved is read again as it was.

#include "fuzz/mesa.h"
#include "link/puerto.h"

using namespace morvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  apoyo::mesa m;
  const std::string texto(reinterpret_cast<const char*>(datos), largo);
  m.dir.escribir("SETTINGS.TXT", texto);
  MSComm serial(m.plat, m.linea);
  enlace e(m.plat, m.ficheros, serial);
  e.valores.ruta_aplicacion = m.ficheros.ruta_aplicacion();
  leer_ajustes(e);
  apoyo::exigir(m.plat.cajas.empty(), "a readable file is read");
  apoyo::exigir(texto.empty() || m.dir.leer("SETTINGS.TXT") == texto, "reading leaves the file alone");
  if (abrir_puerto(e)) {
    const parametros_linea& p = m.linea.linea();
    apoyo::exigir(p.velocidad >= 50 && p.bits_datos >= 5 && p.bits_datos <= 8, "line parameters");
  } else {
    apoyo::exigir(m.plat.cajas.size() == 1, "a refused port has its box");
  }
  const ajustes leidos = e.valores;
  const auto textos = [](const ajustes& a) {
    return std::array{a.velocidad, a.paridad, a.bits_datos, a.bits_parada, a.puerto};
  };
  guardar_ajustes(e);
  leer_ajustes(e);
  apoyo::exigir(textos(e.valores) == textos(leidos), "saved settings are read as they were");
  return 0;
}
