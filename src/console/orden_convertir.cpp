#include "frases/numeros.h"
#include "imagenes.h"
#include "ordenes.h"
#include "platform/rutas.h"

namespace morvane::console {

cierre hacer_convertir(const llamada& ll) {
  const auto& hacia = ll.a.archivos.back();
  const imagen_leida i = leer_imagen(ll, ll.a.archivos.front());
  std::vector<pieza> piezas;
  std::int64_t bytes = 0;
  const std::span<const std::uint8_t> flash = i.que.bytes;
  for (const tramo t : tramos_con_datos(i.archivo.v, flash)) {
    piezas.push_back({t.desde, flash.subspan(static_cast<std::size_t>(t.desde), static_cast<std::size_t>(t.largo()))});
    bytes += t.largo();
  }
  cierre c{.texto = i.nombre() + " está en " + texto_de(hacia) + ": " + entero(bytes) + " bytes de datos."};
  poner_imagen(c.datos, i);
  c.datos["hacia"] = texto_de(hacia);
  c.datos["bytes"] = bytes;
  guardar_piezas(ll, hacia, piezas, true, c);
  return c;
}

}  // namespace morvane::console
