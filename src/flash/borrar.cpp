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

/// The bridge or the chip has started anew in mid-erase: the chip is idle, and nothing says how far the erase has come.
bool deshecho_por_reset(enlace& e) {
  interrumpir(e);
  e.corte.cierre_permitido = true;
  return false;
}

}  // namespace

bool borrar_flash(enlace& e) {
  if (!habilitar_flash(e)) return false;
  const int resets = e.corte.resets;
  if (!paso(e, "i")) return false;
  int sondeos = 0;
  for (bool ocupada = true; ocupada && sondeos < limite_sondeos; ++sondeos) {
    if (!paso(e, "c")) return false;
    if (e.estado_reciente && e.bit_wef != 0) {
      return fallo(e, "Atención ocurrió un problema", "Error al borrar la Flash, se ha detenido la acción de borrar");
    }
    // A poll without a status of its own repeats the verdict of the one before.
    if (e.estado_reciente) ocupada = e.bit_wip != 0;
    e.plat.DoEvents();
  }
  if (!puede_seguir(e)) return false;
  if (sondeos == limite_sondeos) {
    return fallo(e, "Atención, ocurrió un problema al grabar",
                 "Tiempo de borrado de Flash se ha excedido, se ha detenido el proceso de grabación");
  }
  return e.corte.resets == resets || deshecho_por_reset(e);
}

}  // namespace morvane
