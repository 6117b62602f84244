#include "link/tramas.h"

#include "platform/texto.h"

namespace morvane {

namespace {

void anadir_suma(std::string& destino, std::string_view texto) {
  std::uint32_t suma = 0;
  for (const char c : texto) suma += static_cast<unsigned char>(c);
  anadir_hex(destino, suma & 0xFF, 2);
}

/// An operation that is broken off sends nothing more, but for closing the chip where that makes sense.
bool puede_salir(const enlace& e, std::string_view comando) {
  return !e.corte.interrumpida || (comando == "D" && e.corte.cierre_permitido);
}

void enviar(enlace& e, std::string_view comando, fichero* diario) {
  e.respuesta_lista = false;
  e.datos_listos = false;
  e.estado_reciente = false;
  e.trama_empezada = false;
  if (!puede_salir(e, comando)) return;
  e.ultimo_comando = comando.front();
  e.trama.assign(1, STX);
  e.trama += comando;
  anadir_suma(e.trama, comando);
  e.trama += ETX;
  if (diario != nullptr && !diario->linea(e.trama)) diario->cerrar();
  e.recibidos_al_enviar = e.control_serie.recibidos();
  e.control_serie.Output(e.trama);
}

}  // namespace

std::string suma_comprobacion(std::string_view texto) {
  std::string digitos;
  anadir_suma(digitos, texto);
  return digitos;
}

void enviar_comando(enlace& e, std::string_view comando) {
  enviar(e, comando, nullptr);
}

void enviar_comando_log(enlace& e, std::string_view comando, fichero& nfile) {
  enviar(e, comando, &nfile);
}

bool validar_checksum(std::string_view trama) {
  if (trama.size() < 3) return false;
  const std::size_t n = trama.size() - 2;
  return suma_comprobacion(trama.substr(0, n)) == trama.substr(n);
}

}  // namespace morvane
