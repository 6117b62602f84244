#include "flash/borrar.h"

#include "flash/habilitar.h"
#include "link/esperas.h"

namespace morvane {

namespace {

/// Status polls after which an erase counts as too long, whatever the last one says.
constexpr int limite_sondeos = 55;

bool fallo(enlace& e, const char* titulo, const char* texto) {
  preguntar(e, {titulo, texto, botones::Aceptar, icono::critico});
  return false;
}

}  // namespace

bool borrar_flash(enlace& e, avance& a) {
  const labor_en_curso en_curso(a, e.plat, labor::clase::borrar, 0);
  const int resets = e.operacion.resets;
  if (!habilitar_flash(e)) return false;
  a.mapa.olvidar_chip();
  const int cajas = e.operacion.cajas_recepcion;
  if (!paso(e, "i")) return false;
  int sondeos = 0;
  for (bool ocupada = true; ocupada && sondeos < limite_sondeos; ++sondeos) {
    if (!paso(e, "c")) return false;
    if (e.envio.estado_reciente && e.bit_wef != 0) {
      return fallo(e, "Atención ocurrió un problema", "Error al borrar la Flash, se ha detenido la acción de borrar");
    }
    // A poll without a status of its own repeats the verdict of the one before.
    if (e.envio.estado_reciente) ocupada = e.bit_wip != 0;
    e.plat.DoEvents();
  }
  if (!puede_seguir(e)) return false;
  if (sondeos == limite_sondeos) {
    return fallo(e, "Atención, ocurrió un problema al grabar",
                 "Tiempo de borrado de Flash se ha excedido, se ha detenido el proceso de grabación");
  }
  if (interrumpir_tras_reset(e, resets)) return false;
  // A chip that has refused the command shows itself just as idle, and the refusal may have come late.
  if (e.operacion.cajas_recepcion == cajas) a.mapa.borrado();
  return true;
}

}  // namespace morvane
