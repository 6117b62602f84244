#include "frases.h"

namespace morvane::console {

using job::duda;

std::string_view nombre_de(duda d) {
  switch (d) {
    case duda::vacia:
      return "vacia";
    case duda::solo_ff:
      return "solo_ff";
    case duda::fuera_de_flash:
      return "fuera_de_flash";
    case duda::sin_arranque:
      return "sin_arranque";
    case duda::datos_en_configuracion:
      return "datos_en_configuracion";
    case duda::escribe_configuracion:
      return "escribe_configuracion";
    case duda::protegera:
      return "protegera";
    case duda::ventana_dira_distinta:
      return "ventana_dira_distinta";
    case duda::ventana_no_distingue_de_blanco:
      return "ventana_no_distingue_de_blanco";
    case duda::ventana_no_mira_todo:
      return "ventana_no_mira_todo";
  }
  return {};
}

std::string frase(duda d, const job::plan& p) {
  switch (d) {
    case duda::vacia:
      return "El archivo no tiene datos.";
    case duda::solo_ff:
      return "Todos los datos del archivo son FF, como en un chip borrado.";
    case duda::fuera_de_flash:
      return "El archivo tiene datos detrás de 03FFFF, que ningún chip tiene.";
    case duda::sin_arranque:
      return "El archivo no da ni pila ni arranque, de " + rango(chip.arranque) +
             ": el chip no ejecutará nada tras un RESET.";
    case duda::datos_en_configuracion:
      return "El archivo da datos para la configuración, de 000400 a 00041F.";
    case duda::escribe_configuracion:
      return "Se grabará la configuración, de 000400 a 00041F, con algo que no es FF.";
    case duda::protegera:
      return "El chip quedará protegido contra la lectura.";
    case duda::ventana_dira_distinta:
      return "La comprobación por sumas de la ventana dirá que el chip es distinto aunque esté bien grabado.";
    case duda::ventana_no_distingue_de_blanco:
      return "La comprobación por sumas de la ventana no distingue un chip con este archivo de uno borrado.";
    case duda::ventana_no_mira_todo:
      return "La comprobación por sumas de la ventana no mira lo que hay de " + rango(p.sin_mirar) + ".";
  }
  return {};
}

}  // namespace morvane::console
