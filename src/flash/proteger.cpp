#include "flash/proteger.h"

#include "files/texto.h"
#include "image/chip.h"
#include "link/envio.h"
#include "link/esperas.h"

namespace morvane {

namespace {

std::string comando_de_proteccion() {
  return "g" + hex(chip.palabra_proteccion.desde, 6).append(chip.valor_proteccion);
}

}  // namespace

void proteger_flash(enlace& e) {
  if (e.operacion.sin_respuesta) return;
  const int resets = e.operacion.resets;
  enviar_comando(e, comando_de_proteccion());
  esperar_datos_rapido(e);
  if (!paso(e, "D") || !paso(e, "A") || !paso(e, "c") || e.operacion.sin_respuesta) return;
  if (interrumpir_tras_reset(e, resets)) return;
  const bool protegida = e.bit_fs != 0;
  preguntar(e,
            {"Atención ocurrió un problema",
             protegida ? "Se ha protegido la memoria flash!" : "No es posible proteger la memoria flash!",
             botones::Aceptar, protegida ? icono::informacion : icono::critico},
            {.que = protegida ? asunto::ninguno : asunto::sin_proteger});
}

}  // namespace morvane
