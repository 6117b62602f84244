#pragma once

#include "sesion.h"

/// The orders of the program. Each gives its end, or throws a `fracaso` with it.
namespace morvane::console {

cierre hacer_puertos(const llamada& ll);
cierre hacer_estado(const llamada& ll);
cierre hacer_plan(const llamada& ll);
cierre hacer_borrar(const llamada& ll);
cierre hacer_grabar(const llamada& ll);
cierre hacer_verificar(const llamada& ll);
cierre hacer_leer(const llamada& ll);
cierre hacer_identificar(const llamada& ll);
cierre hacer_convertir(const llamada& ll);
cierre hacer_reset(const llamada& ll);
cierre hacer_proteger(const llamada& ll);
cierre hacer_medir(const llamada& ll);
cierre hacer_comprobar(const llamada& ll);

/// Adds to the ports what this system lacks for them, and how it is had.
void ofrecer_lo_que_falta(cierre& c);

}  // namespace morvane::console
