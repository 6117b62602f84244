#include "cierre.h"

#include <utility>

namespace morvane::console {

using job::desenlace;

json adaptador_en_json(const adaptador& a) {
  json j = {{"fabricante", a.fabricante}, {"producto", a.producto}, {"serie", a.serie}};
  j["identidad"] = a.identidad;
  j["conductor"] = a.conductor;
  if (a.retencion_ms) j["retencion_ms"] = *a.retencion_ms;
  return j;
}

std::string_view nombre_de(desenlace que) {
  switch (que) {
    case desenlace::hecho:
      return "hecho";
    case desenlace::interno:
      return "interno";
    case desenlace::uso:
      return "uso";
    case desenlace::archivo:
      return "archivo";
    case desenlace::puerto:
      return "puerto";
    case desenlace::silencio:
      return "silencio";
    case desenlace::linea:
      return "linea";
    case desenlace::rechazada:
      return "rechazada";
    case desenlace::protegida:
      return "protegida";
    case desenlace::distinta:
      return "distinta";
    case desenlace::chip:
      return "chip";
    case desenlace::certificado:
      return "certificado";
    case desenlace::detenido:
      return "detenido";
  }
  return "interno";
}

int codigo_de(desenlace que, int senal) {
  constexpr int sigint = 2, por_otra_senal = 143;
  if (que == desenlace::detenido && senal != sigint && senal != 0) return por_otra_senal;
  return static_cast<int>(que);
}

void fracasar(desenlace que, std::string texto, std::string remedio) {
  throw fracaso{{.que = que, .texto = std::move(texto), .remedio = std::move(remedio)}};
}

}  // namespace morvane::console
