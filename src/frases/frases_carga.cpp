#include "frases/frases.h"
#include "frases/numeros.h"
#include "image/chip.h"

namespace morvane {

namespace {

using estado = informe_carga::estado;

std::string en_linea(std::uint64_t numero) {
  return " (línea " + std::to_string(numero) + ")";
}

std::string desde_linea(std::uint64_t cuantas, std::uint64_t primera) {
  return cuantas == 1 ? en_linea(primera) : " (la primera, línea " + std::to_string(primera) + ")";
}

std::int64_t con_signo(std::uint64_t n) {
  return static_cast<std::int64_t>(n);
}

}  // namespace

std::string frase_breve(const informe_carga& i) {
  switch (i.como) {
    case estado::nada:
      return "Nada cargado";
    case estado::desconocido:
      return "Nada cargado: tipo desconocido";
    case estado::fallido:
      return "Nada cargado: archivo dañado";
    case estado::detenido:
    case estado::entero:
      break;
  }
  if (i.tramos.empty()) return "Nada cargado: no trae datos";
  const std::string texto = entero(i.ocupados(), 4) + " B, " + direcciones(i.entre());
  return i.como == estado::detenido ? "Detenido: " + texto : texto;
}

std::vector<std::string> avisos_de(const informe_carga& i) {
  std::vector<std::string> todos;
  if (i.como == estado::detenido) todos.emplace_back("La carga se detuvo: la imagen está incompleta");
  if (i.parecidas > 0) {
    todos.push_back(cuantos(con_signo(i.parecidas), "línea parece de datos y no se ha tomado",
                            "líneas parecen de datos y no se han tomado") +
                    desde_linea(i.parecidas, i.primera_parecida));
  }
  if (i.malas > 0) {
    todos.push_back(cuantos(con_signo(i.malas), "registro tiene mal la suma o la longitud y se ha tomado como está",
                            "registros tienen mal la suma o la longitud y se han tomado como están") +
                    desde_linea(i.malas, i.primera_mala));
  }
  if (i.retirados > 0) {
    todos.push_back(cuantos(con_signo(i.retirados), "byte", "bytes") + " del archivo en " +
                    direcciones(chip.configuracion) + " no se graban: ahí va 00");
  }
  return todos;
}

std::string frase(const informe_carga& i) {
  if (i.tramos.empty()) return frase_breve(i);
  std::string texto;
  if (i.registros > 0) texto = cuantos(con_signo(i.registros), "registro, ", "registros, ");
  texto += cuantos(i.ocupados(), "byte", "bytes") + " en " + direcciones(i.entre());
  const auto huecos = static_cast<std::int64_t>(i.tramos.size());
  if (huecos > 1) texto += ", en " + entero(huecos, 4) + " tramos";
  if (i.ajenas > 0) texto += "; " + cuantos(con_signo(i.ajenas), "línea pasada", "líneas pasadas") + " por alto";
  return texto;
}

}  // namespace morvane
