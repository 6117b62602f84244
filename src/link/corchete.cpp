#include "link/corchete.h"

#include "link/envio.h"
#include "link/puerto.h"

namespace morvane {

corchete::corchete(enlace& e) : e_(e), abierto_(abrir_puerto(e)) {}

corchete::~corchete() {
  if (abierto_) cerrar_puerto(e_);
}

void corchete::terminar() {
  cerrar_puerto(e_);
  if (!e_.operacion.interrumpida && !e_.operacion.sin_respuesta) return;
  // What an earlier Cancel has left would spoil the repetition as well.
  e_.tiempo_agotado = false;
  if (e_.peticiones_cierre > 0) return;
  preguntar(e_,
            {"Atención", "La comunicación se ha interrumpido y la operación no ha terminado. Debe repetirla",
             botones::Aceptar, icono::critico},
            {.que = asunto::interrumpida});
}

void abrir_chip(enlace& e, espera esperar) {
  enviar_comando(e, "A");
  esperar(e);
}

void cerrar_chip(enlace& e, espera esperar) {
  const bool rota = e.operacion.interrumpida, sin_respuesta = e.operacion.sin_respuesta;
  const rotura por = e.operacion.por;
  enviar_comando(e, "D");
  esperar(e);
  // A question answered Yes has opened the chip once more.
  if (e.operacion.interrumpida && e.operacion.cierre_permitido && !rota) enviar_comando(e, "D");
  e.operacion.interrumpida = rota;
  e.operacion.por = por;
  e.operacion.sin_respuesta = sin_respuesta;
}

}  // namespace morvane
