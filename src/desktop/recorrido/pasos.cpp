#include "pasos.h"

#include "viaje.h"

namespace morvane {
namespace {

using namespace std::chrono_literals;

struct paso {
  const char* titulo;
  std::chrono::seconds limite;
  void (*dar)(viaje&);
};

constexpr paso pasos[] = {
    {"El programa arranca", 20s, arrancar},
    {"Nada que grabar", 20s, programar_sin_archivo},
    {"Se abre una muestra", 20s, abrir_muestra},
    {"El chip queda en blanco", 60s, borrar},
    {"El programa va al chip", 120s, programar},
    {"¿Ha llegado bien?", 60s, verificar},
    {"Lo grabado, de vuelta", 120s, leer_lo_programado},
    {"Un texto en el volcado", 20s, buscar_en_un_volcado},
    {"De una celda del mapa a sus bytes", 20s, mirar_en_el_mapa},
    {"Un rango a medida", 60s, leer_un_rango},
    {"Otro archivo", 60s, abrir_otro_archivo},
    {"Alto a medio camino", 60s, detener},
    {"Una placa que no contesta", 60s, placa_muda},
    {"Un puerto sin nada detrás", 20s, puerto_sin_nada},
    {"Una placa que se enchufa con el ratón", 60s, enchufar_placa_simulada},
    {"Quién es Morvane", 20s, acerca_de},
    {"El manual, por su sitio", 20s, ayuda},
    {"Fin", 20s, cerrar},
};

}  // namespace

void recorrer(programa& p, testigo& t, const std::filesystem::path& directorio) {
  viaje v{p, t, directorio};
  for (const paso& uno : pasos) {
    t.paso(uno.titulo, uno.limite);
    uno.dar(v);
    t.comprobar();
  }
}

}  // namespace morvane
