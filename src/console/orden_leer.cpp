#include "barra.h"
#include "console/huella.h"
#include "frases.h"
#include "frases/numeros.h"
#include "imagenes.h"
#include "ordenes.h"
#include "platform/rutas.h"

namespace morvane::console {

cierre hacer_leer(const llamada& ll) {
  const auto& ruta = ll.a.archivos.front();
  exigir_sitio(ruta);
  const tramo donde{ll.a.desde.value_or(0), ll.a.hasta.value_or(chip.flash - 1) + 1};
  const trabajo_hecho t = con_placa(ll, [&](const job::puesto& p) { return job::leer(p, donde); });
  const bool leido = t.r.fin.bien();
  cierre c = cierre_de(ll, t,
                       leido ? "Leído de " + rango(donde) + " a " + texto_de(ruta) + ": " + entero(donde.largo()) +
                                   " bytes en " + duracion(t.r.duracion) + "."
                             : "");
  c.datos["archivo"] = texto_de(ruta);
  c.datos["desde"] = donde.desde;
  c.datos["hasta"] = donde.hasta - 1;
  if (!leido) return c;
  c.datos["bytes"] = donde.largo();
  if (donde.largo() == chip.flash) c.datos["sha256"] = sha256(t.r.leido);
  const pieza todo{donde.desde, t.r.leido};
  guardar_piezas(ll, ruta, {&todo, 1}, false, c);
  return c;
}

}  // namespace morvane::console
