#include "link/envio.h"

#include "serial/tramas.h"

namespace morvane {

namespace {

/// An operation that is broken off sends nothing more, but for closing the chip where that makes sense.
bool puede_salir(const enlace& e, std::string_view comando) {
  return !e.operacion.interrumpida || (comando == "D" && e.operacion.cierre_permitido);
}

void enviar(enlace& e, std::string_view comando, fichero* diario) {
  e.respuesta_lista = false;
  e.datos_listos = false;
  e.envio = {.recibidos_antes = e.control_serie.recibidos()};
  if (!puede_salir(e, comando)) return;
  e.ultimo_comando = comando.front();
  const std::string trama = en_trama(comando);
  if (diario != nullptr && !diario->linea(trama)) diario->cerrar();
  e.control_serie.Output(trama);
  e.cuentas.enviados += trama.size();
}

}  // namespace

void enviar_comando(enlace& e, std::string_view comando) {
  enviar(e, comando, nullptr);
}

void enviar_comando_log(enlace& e, std::string_view comando, fichero& nfile) {
  enviar(e, comando, &nfile);
}

}  // namespace morvane
