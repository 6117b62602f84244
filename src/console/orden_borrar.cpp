#include "barra.h"
#include "ordenes.h"

namespace morvane::console {

cierre hacer_borrar(const llamada& ll) {
  const trabajo_hecho t = con_placa(ll, [](const job::puesto& p) { return job::borrar(p); });
  std::string texto;
  if (t.r.fin.bien()) {
    texto = t.r.borrado.value_or(false)
                ? "Borrado, y comprobado en todos los bloques, en " + duracion(t.r.duracion) + "."
                : "El chip ya estaba borrado: comprobado en todos los bloques.";
  }
  return cierre_de(ll, t, std::move(texto));
}

cierre hacer_reset(const llamada& ll) {
  const trabajo_hecho t = con_placa(ll, [](const job::puesto& p) { return job::reiniciar(p); });
  return cierre_de(ll, t, t.r.fin.bien() ? "El procesador se ha reiniciado." : "");
}

}  // namespace morvane::console
