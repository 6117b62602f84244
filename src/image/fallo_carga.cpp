#include "image/fallo_carga.h"

namespace morvane {

fallo_carga fallo_en_linea(std::uint64_t numero, fallo_carga fallo) {
  fallo.linea = numero;
  return fallo;
}

fallo_carga fallo_de_archivo(const causa_archivo& causa) {
  return {.cual = fallo_carga::clase::archivo, .archivo = causa};
}

void desechar_carga(Variables_grab& v) {
  limpiar_buffer_salida(v);
  v.dir_max = 0;
  v.carga = {.como = informe_carga::estado::fallido};
}

}  // namespace morvane
