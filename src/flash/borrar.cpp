#include "flash/borrar.h"

#include "flash/habilitar.h"
#include "link/esperas.h"

namespace morvane {

namespace {

/// Status polls after which an erase counts as too long, whatever the last one says.
constexpr int limite_sondeos = 55;

bool fallo(enlace& e, avance& a, const caja& mensaje, asunto que) {
  a.labor.como = labor::final::fallida;
  preguntar(e, mensaje, {.que = que});
  return false;
}

}  // namespace

bool borrar_flash(enlace& e, avance& a) {
  const labor_en_curso en_curso(a, e.plat, labor::clase::borrar, 0);
  const int resets = e.operacion.resets;
  if (!habilitar_flash(e)) return false;
  a.mapa.olvidar_chip();
  a.labor.donde = {0, total_flash};
  const int cajas = e.operacion.cajas_recepcion;
  if (!paso(e, "i")) return false;
  int sondeos = 0;
  for (bool ocupada = true; ocupada && sondeos < limite_sondeos; ++sondeos) {
    if (!paso(e, "c")) return false;
    if (e.envio.estado_reciente && e.bit_wef != 0) {
      return fallo(e, a,
                   {"Atención ocurrió un problema", "Error al borrar la Flash, se ha detenido la acción de borrar",
                    botones::Aceptar, icono::critico},
                   asunto::borrado_fallido);
    }
    // A poll without a status of its own repeats the verdict of the one before.
    if (e.envio.estado_reciente) ocupada = e.bit_wip != 0;
    e.plat.DoEvents();
  }
  if (!puede_seguir(e)) return false;
  if (sondeos == limite_sondeos) {
    return fallo(e, a,
                 {"Atención, ocurrió un problema al grabar",
                  "Tiempo de borrado de Flash se ha excedido, se ha detenido el proceso de grabación", botones::Aceptar,
                  icono::critico},
                 asunto::borrado_largo);
  }
  if (interrumpir_tras_reset(e, resets)) return false;
  // A chip that has refused the command shows itself just as idle, and the refusal may have come late.
  const bool sin_quejas = e.operacion.cajas_recepcion == cajas;
  if (sin_quejas) a.mapa.borrado();
  a.labor.como = sin_quejas ? labor::final::hecha : labor::final::fallida;
  return true;
}

}  // namespace morvane
