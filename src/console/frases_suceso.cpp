#include "frases.h"
#include "informe.h"

namespace morvane::console {

using job::fase;
using job::suceso;

std::string_view nombre_de(fase cual) {
  switch (cual) {
    case fase::abrir:
      return "abrir";
    case fase::mirar:
      return "mirar";
    case fase::borrar:
      return "borrar";
    case fase::grabar:
      return "grabar";
    case fase::probar:
      return "probar";
    case fase::localizar:
      return "localizar";
    case fase::leer:
      return "leer";
    case fase::proteger:
      return "proteger";
    case fase::reiniciar:
      return "reiniciar";
    case fase::medir:
      return "medir";
    case fase::cerrar:
      return "cerrar";
  }
  return {};
}

std::string_view nombre_para_persona(fase cual) {
  switch (cual) {
    case fase::abrir:
      return "Abriendo";
    case fase::mirar:
      return "Mirando";
    case fase::borrar:
      return "Borrando";
    case fase::grabar:
      return "Grabando";
    case fase::probar:
      return "Comprobando";
    case fase::localizar:
      return "Buscando diferencias";
    case fase::leer:
      return "Leyendo";
    case fase::proteger:
      return "Protegiendo";
    case fase::reiniciar:
      return "Reiniciando";
    case fase::medir:
      return "Midiendo";
    case fase::cerrar:
      return "Cerrando";
  }
  return {};
}

std::string_view nombre_de(suceso que) {
  switch (que) {
    case suceso::repetida:
      return "repetida";
    case suceso::reset:
      return "reset";
    case suceso::rechazo:
      return "rechazo";
    case suceso::sin_respuesta:
      return "sin_respuesta";
    case suceso::reabierta:
      return "reabierta";
    case suceso::palabra_bien:
      return "palabra_bien";
    case suceso::palabra_otra_vez:
      return "palabra_otra_vez";
    case suceso::forma_abandonada:
      return "forma_abandonada";
    case suceso::borrado_otra_vez:
      return "borrado_otra_vez";
  }
  return {};
}

std::string frase(suceso que, char codigo) {
  switch (que) {
    case suceso::repetida:
      return "Se repite un comando de lectura.";
    case suceso::reset:
      return "La placa se ha reiniciado.";
    case suceso::rechazo:
      return "La placa ha rechazado un comando: " + std::string(significado_de(codigo)) + ".";
    case suceso::sin_respuesta:
      return "Un comando se ha quedado sin respuesta.";
    case suceso::reabierta:
      return "La línea era dudosa: se ha cerrado y abierto el chip.";
    case suceso::palabra_bien:
      return "Una palabra dudosa se ha leído y está bien.";
    case suceso::palabra_otra_vez:
      return "Una palabra no estaba y se graba otra vez.";
    case suceso::forma_abandonada:
      return "La placa no suma ventanas sueltas: se leerá.";
    case suceso::borrado_otra_vez:
      return "Se borra otra vez.";
  }
  return {};
}

}  // namespace morvane::console
