#include "bridge/opciones.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <type_traits>

#include "bridge/averias.h"

namespace puente {

namespace {

/// Puts a value into the options; False if it is none for this option. An option without a value gets an empty one.
using colocador = bool (*)(opciones&, std::string_view);

struct opcion {
  std::string_view nombre;
  /// What the help calls the value; empty for an option without one.
  std::string_view valor;
  std::string_view ayuda;
  colocador colocar;
};

template <class T>
bool numero(T& campo, std::string_view texto, std::uint64_t minimo, std::uint64_t maximo) {
  std::uint64_t n = 0;
  const auto [fin, error] = std::from_chars(texto.data(), texto.data() + texto.size(), n);
  if (error != std::errc{} || fin != texto.data() + texto.size() || n < minimo || n > maximo) return false;
  campo = static_cast<T>(n);
  return true;
}

/// The place of a value, which is one of the board's own, of its faults, or of its chip's.
template <class T, class parte>
T& en(opciones& o, T parte::*campo) {
  if constexpr (std::is_same_v<parte, faltas>) return o.fallos.*campo;
  if constexpr (std::is_same_v<parte, conducta>) return o.modo.*campo;
  if constexpr (std::is_same_v<parte, opciones>) return o.*campo;
}

template <auto campo>
bool ruta(opciones& o, std::string_view texto) {
  en(o, campo) = texto;
  return !texto.empty();
}

template <auto campo>
bool marca(opciones& o, std::string_view) {
  return en(o, campo) = true;
}

/// Frames and characters count from 1.
template <auto campo>
bool trama(opciones& o, std::string_view texto) {
  return numero(en(o, campo), texto, 1, UINT64_MAX);
}

template <auto campo, std::uint64_t maximo>
bool cantidad(opciones& o, std::string_view texto) {
  return numero(en(o, campo), texto, 0, maximo);
}

template <auto campo>
bool celda(opciones& o, std::string_view texto) {
  return numero(en(o, campo).emplace(), texto, 0, chip::tamano - 1);
}

bool codigo_error(opciones& o, std::string_view texto) {
  o.fallos.codigo_error = texto.empty() ? ' ' : texto[0];
  return texto.size() == 1 && texto[0] > ' ' && texto[0] <= '~';
}

bool una_averia(opciones& o, std::string_view texto) {
  std::uint64_t semilla = 0;
  if (!numero(semilla, texto, 0, UINT64_MAX)) return false;
  azar suerte(semilla);
  o.averia = averia_al_azar(o.fallos, o.modo, suerte).nombre;
  return true;
}

constexpr std::uint64_t un_dia_ms = 86'400'000;

constexpr std::array tabla{
    opcion{"--enlace", "RUTA", "enlace simbólico al terminal, p. ej. puertos/COM1", ruta<&opciones::enlace>},
    opcion{"--baudios", "N", "velocidad de la línea en ambos sentidos (57600)",
           [](opciones& o, std::string_view t) { return numero(o.baudios, t, 50, 4'000'000); }},
    opcion{"--sin-ritmo", "", "línea sin velocidad: todo llega al instante",
           [](opciones& o, std::string_view) {
             o.baudios = 0;
             return true;
           }},
    opcion{"--adaptador", "CUAL", "retiene lo que llega como ftdi, ftdi-1ms, ch340, cp2102 o acm",
           [](opciones& o, std::string_view t) { return (o.cable = adaptador_de(t)).has_value(); }},
    opcion{"--flash", "FICHERO", "conserva en él la flash del chip (262144 bytes)", ruta<&opciones::flash>},
    opcion{"--traza", "FICHERO", "anota en él cada trama con su tiempo", ruta<&opciones::traza>},
    opcion{"--reproducir", "FICHERO", "en lugar de una placa, repite lo que dice esa traza",
           ruta<&opciones::reproducir>},
    opcion{"--ligada", "", "termina cuando se cierra su entrada estándar", marca<&opciones::ligada>},
    opcion{"--protegida", "", "el chip empieza con la flash protegida", marca<&opciones::protegida>},
    opcion{"--sondeos-borrado", "N", "lecturas de estado que dura un borrado (3)",
           cantidad<&conducta::sondeos_de_borrado, 1'000'000>},
    opcion{"--borrado-ms", "N", "milisegundos que dura, en su lugar; D y A no lo cortan (0)",
           [](opciones& o, std::string_view t) {
             std::uint32_t ms = 0;
             if (!numero(ms, t, 0, un_dia_ms)) return false;
             o.modo.borrado_dura = std::chrono::milliseconds{ms};
             return true;
           }},
    opcion{"--falla-borrado", "", "el borrado termina con error", marca<&conducta::falla_borrado>},
    opcion{"--falla-config", "", "el registro de configuración no se escribe", marca<&conducta::falla_config>},
    opcion{"--falla-permiso", "", "la escritura no se habilita", marca<&conducta::falla_permiso>},
    opcion{"--mudo", "", "el estado se lee siempre como FF", marca<&conducta::mudo>},
    opcion{"--bit-a-0", "DIR", "celda cuyo bit 0 nunca es 1", celda<&conducta::celda_a_0>},
    opcion{"--bit-a-1", "DIR", "celda cuyo bit 0 nunca es 0", celda<&conducta::celda_a_1>},
    opcion{"--muda-desde", "T", "desde la trama T no atiende ni responde", trama<&faltas::muda_desde>},
    opcion{"--calla-en", "T", "no responde a la trama T", trama<&faltas::calla_en>},
    opcion{"--cortada-en", "T", "corta la respuesta a la trama T", trama<&faltas::cortada_en>},
    opcion{"--cortada-tras", "N", "caracteres que quedan de la respuesta cortada (0)",
           cantidad<&faltas::cortada_tras, 1000>},
    opcion{"--retrasada-en", "T", "retrasa la respuesta a la trama T", trama<&faltas::retrasada_en>},
    opcion{"--retrasa-todas", "", "retrasa todas las respuestas", marca<&faltas::retrasa_todas>},
    opcion{"--retraso-ms", "N", "cuánto se retrasan (0)", cantidad<&faltas::retraso_ms, un_dia_ms>},
    opcion{"--suma-mala-en", "T", "suma de control errónea a la trama T", trama<&faltas::suma_mala_en>},
    opcion{"--suma-minuscula-en", "T", "suma de control en minúsculas a la trama T", trama<&faltas::suma_minuscula_en>},
    opcion{"--error-en", "T", "rechaza la trama T", trama<&faltas::error_en>},
    opcion{"--codigo-error", "C", "carácter con que la rechaza (6)", codigo_error},
    opcion{"--inactiva-en", "T", "el estado que pide la trama T se lee como FF", trama<&faltas::inactiva_en>},
    opcion{"--eco-desde", "T", "desde la trama T las devuelve como llegan", trama<&faltas::eco_desde>},
    opcion{"--reset-en", "T", "responde RESET a la trama T y el chip reinicia", trama<&faltas::reset_en>},
    opcion{"--reset-repetido", "N", "cuántas veces seguidas lo envía (1)", cantidad<&faltas::reset_repetido, 1000>},
    opcion{"--reset-suelto-en", "T", "RESET sin que se pregunte, tras la trama T", trama<&faltas::reset_suelto_en>},
    opcion{"--reset-suelto-ms", "N", "cuánto después (0)", cantidad<&faltas::reset_suelto_ms, un_dia_ms>},
    opcion{"--duplicada-en", "T", "responde dos veces a la trama T", trama<&faltas::duplicada_en>},
    opcion{"--suelta-en", "T", "con la trama T viene otra respuesta que nadie pidió", trama<&faltas::suelta_en>},
    opcion{"--saluda", "", "envía una respuesta cada vez que se abre la línea", marca<&faltas::saluda>},
    opcion{"--ruido", "N", "caracteres de ruido ante cada respuesta (0)", cantidad<&faltas::ruido, 10'000>},
    opcion{"--ruido-detras", "N", "y tras cada respuesta (0)", cantidad<&faltas::ruido_detras, 10'000>},
    opcion{"--ruido-en", "T", "ese ruido, sólo con la respuesta a la trama T", trama<&faltas::ruido_en>},
    opcion{"--formas-fijas", "", "rechaza las lecturas y exámenes que las ventanas no piden",
           marca<&faltas::formas_fijas>},
    opcion{"--bloques-enteros", "", "examina siempre el bloque entero en que cae la dirección",
           marca<&faltas::bloques_enteros>},
    opcion{"--cortos-desde-cero", "", "examina siempre desde 0 hasta 4096 bytes", marca<&faltas::cortos_desde_cero>},
    opcion{"--lecturas-cortas", "", "lee 32 bytes cuando se le piden más", marca<&faltas::lecturas_cortas>},
    opcion{"--balbuceo-desde", "T", "desde la trama T envía caracteres sin fin", trama<&faltas::balbuceo_desde>},
    opcion{"--balbuceo-etx", "", "con ETX entre ellos", marca<&faltas::balbuceo_etx>},
    opcion{"--goteo-ms", "N", "pausa entre los caracteres de una respuesta (0)",
           cantidad<&faltas::goteo_ms, un_dia_ms>},
    opcion{"--por-mil-sin-grabar", "N", "de cada mil palabras, las que confirma sin grabarlas (0)",
           cantidad<&faltas::por_mil_sin_grabar, 1000>},
    opcion{"--altera", "N", "altera el carácter N hacia el programa", trama<&faltas::altera>},
    opcion{"--pierde", "N", "pierde el carácter N hacia el programa", trama<&faltas::pierde>},
    opcion{"--altera-ida", "N", "altera el carácter N hacia la placa", trama<&faltas::altera_ida>},
    opcion{"--pierde-ida", "N", "pierde el carácter N hacia la placa", trama<&faltas::pierde_ida>},
    opcion{"--rearranca-en", "T", "pierde la corriente un momento antes de la trama T", trama<&faltas::rearranca_en>},
    opcion{"--cuelga-en", "T", "cuelga la línea al recibir la trama T y termina", trama<&faltas::cuelga_en>},
    opcion{"--semilla", "N", "semilla de todo lo que va por azar (1)",
           [](opciones& o, std::string_view t) { return numero(o.fallos.semilla, t, 0, UINT64_MAX); }},
    opcion{"--averia", "N", "una avería al azar, que la semilla N elige y se dice al empezar", una_averia},
    opcion{"--ayuda", "", "muestra esta ayuda (también --help)", marca<&opciones::ayuda>},
};

/// Options that do nothing without another one were surely meant otherwise.
std::string incompleta(const opciones& o) {
  const faltas &f = o.fallos, por_omision;
  if (f.cortada_tras != 0 && f.cortada_en == 0) return "--cortada-tras requiere --cortada-en";
  const bool retrasa = f.retrasa_todas || f.retrasada_en != 0;
  if (retrasa && f.retraso_ms == 0) return "--retrasada-en y --retrasa-todas requieren --retraso-ms";
  if (!retrasa && f.retraso_ms != 0) return "--retraso-ms requiere --retrasada-en o --retrasa-todas";
  if (f.codigo_error != por_omision.codigo_error && f.error_en == 0) return "--codigo-error requiere --error-en";
  if (f.reset_repetido != por_omision.reset_repetido && f.reset_en == 0) return "--reset-repetido requiere --reset-en";
  if (f.reset_suelto_ms != 0 && f.reset_suelto_en == 0) return "--reset-suelto-ms requiere --reset-suelto-en";
  if (f.ruido_en != 0 && f.ruido == 0 && f.ruido_detras == 0) return "--ruido-en requiere --ruido o --ruido-detras";
  if (f.balbuceo_etx && f.balbuceo_desde == 0) return "--balbuceo-etx requiere --balbuceo-desde";
  const bool con_chip = !o.flash.empty() || o.protegida || o.modo != conducta{} || f != por_omision;
  if (!o.reproducir.empty() && con_chip)
    return "--reproducir no admite más que --enlace, --traza, --sin-ritmo y --ligada";
  return "";
}

}  // namespace

lectura_opciones leer_opciones(std::span<const char* const> argumentos) {
  lectura_opciones r;
  for (std::size_t i = 0; i < argumentos.size(); ++i) {
    const std::string argumento = argumentos[i];
    const std::size_t igual = argumento.find('=');
    std::string nombre = argumento == "--help" ? "--ayuda" : argumento.substr(0, igual);
    const auto* o = std::find_if(tabla.begin(), tabla.end(), [&](const opcion& x) { return x.nombre == nombre; });
    if (o == tabla.end()) return {{}, "opción desconocida: " + argumento};
    std::string valor;
    if (igual != std::string::npos) {
      if (o->valor.empty()) return {{}, "la opción " + nombre + " no lleva valor"};
      valor = argumento.substr(igual + 1);
    } else if (!o->valor.empty()) {
      if (++i == argumentos.size()) return {{}, "falta el valor de la opción " + nombre};
      valor = argumentos[i];
    }
    if (!o->colocar(r.valores, valor)) return {{}, "valor no válido para la opción " + nombre.append(": ") + valor};
    if (r.valores.ayuda) return r;
  }
  r.error = incompleta(r.valores);
  return r;
}

std::string texto_de_ayuda() {
  constexpr std::size_t ancho = 28;
  std::string texto =
      "Uso: puente [opciones]\n\n"
      "Hace de placa puente, con su chip, en un seudoterminal. Termina con SIGTERM o Ctrl+C.\n"
      "Las tramas (T) se cuentan desde 1, en el orden en que la placa las recibe.\n\n";
  for (const opcion& o : tabla) {
    std::string izquierda = "  ";
    izquierda.append(o.nombre).append(o.valor.empty() ? "" : " ").append(o.valor);
    izquierda.resize(std::max(ancho, izquierda.size() + 2), ' ');
    texto.append(izquierda).append(o.ayuda).append("\n");
  }
  return texto;
}

}  // namespace puente
