#include "flash/habilitar.h"

#include "image/chip.h"
#include "link/esperas.h"

namespace morvane {

namespace {

/// False; the user is told why, unless the bits are those of an older reply.
bool problema(enlace& e, const char* texto, asunto que) {
  if (e.operacion.sin_respuesta) return false;
  preguntar(e, {"Atención ocurrió un problema", texto, botones::Aceptar, icono::critico}, {.que = que});
  return false;
}

bool permitir_escritura(enlace& e) {
  if (!paso(e, "a") || !paso(e, "c")) return false;
  return e.bit_wen != 0 || problema(e, "Error al habilitar escritura en la Flash", asunto::sin_permiso_de_escritura);
}

bool escribir_configuracion(enlace& e) {
  if (!paso(e, chip.comando_configuracion) || !paso(e, "c")) return false;
  return e.bit_config != 0 || problema(e, "Error al escribir el registro de configuración", asunto::sin_configuracion);
}

}  // namespace

bool habilitar_flash(enlace& e) {
  return habilitar_flash_reset(e) && permitir_escritura(e);
}

bool habilitar_flash_reset(enlace& e) {
  return permitir_escritura(e) && escribir_configuracion(e);
}

}  // namespace morvane
