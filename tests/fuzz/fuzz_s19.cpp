// A firmware file of any content: the load ends, the image keeps its invariants.

#include <cstdlib>

#include "apoyo/carpeta.h"
#include "image/cargar_s19.h"
#include "platform/gemelo.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  static apoyo::carpeta dir;
  static morvane::Variables_grab v;
  morvane::gemelo plat;
  morvane::contador_cambios cambios;
  morvane::avance a(cambios);
  morvane::limpiar_buffer_salida(v);
  v.ruta_archivo = dir.escribir("f.s19", std::string(reinterpret_cast<const char*>(datos), largo));
  morvane::cargar_s19(plat, v, a);
  const bool ninguna_a_medias = plat.cajas.size() == 1 && (v.dir_max > 0 || v.buffer_salida[0] == 0xFF);
  if (!ninguna_a_medias || !morvane::hay_celda(v.dir_max) || a.cancelar) std::abort();
  return 0;
}
