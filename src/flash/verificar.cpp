#include "flash/verificar.h"

#include <algorithm>
#include <optional>

#include "files/texto.h"
#include "flash/bloque.h"
#include "link/corchete.h"
#include "link/envio.h"
#include "link/puerto.h"
#include "serial/tramas.h"

namespace morvane {

namespace {

/// Nothing: no verdict. Passed before the last block that the loop knows of is `si_hasta_el_tope`.
enum class veredicto { ninguno, no, si, si_hasta_el_tope };

void decir(enlace& e, const char* texto) {
  preguntar(e, {"Atención", texto, botones::Aceptar, icono::informacion});
}

/// What to do where more characters come than a reply has. They may be noise, with the reply still on its way, so that
/// a next one of the same length would be read at the wrong place.
enum class sobrante { se_tolera, interrumpe };

/// True if noise stands in front of what came, so that the reply in it would be read at the wrong place, or if it is no
/// reply, but an echo for one. Without any STX nobody can tell.
bool ajena(const enlace& e) {
  const std::string& llegado = e.entrada_serie;
  const std::size_t inicio = llegado.find(STX);
  if (inicio == std::string::npos) return false;
  const bool con_codigo = llegado.size() > 1 && llegado[1] >= '0' && llegado[1] <= '9';
  return inicio != 0 || !con_codigo;
}

/// Sends a command of the fixed-length modes and gives what came, if it came for this command.
std::optional<std::string_view> examinar(enlace& e, std::string_view comando, sobrante si_sobra) {
  if (!puede_seguir(e)) return std::nullopt;
  enviar_comando(e, comando);
  const std::uint64_t antes = e.control_serie.recibidos();
  esperar_datos(e);
  if (!puede_seguir(e) || e.operacion.sin_respuesta) return std::nullopt;
  const bool sobra = e.control_serie.recibidos() - antes != static_cast<std::uint64_t>(e.control_serie.RThreshold());
  if (sobra) e.linea_inquieta = true;
  if ((sobra && si_sobra == sobrante::interrumpe) || ajena(e)) interrumpir(e);
  return e.operacion.interrumpida ? std::nullopt : std::optional<std::string_view>(e.respuesta);
}

/// `cuantos` characters of a reply from position `desde`, counted from 1; fewer where it is shorter.
std::string_view campo(std::string_view respuesta, std::size_t desde, std::size_t cuantos) {
  return respuesta.size() < desde ? std::string_view() : respuesta.substr(desde - 1, cuantos);
}

tramo tramo_de_bloque(int i) {
  return {chip.bloque * i, chip.bloque * (i + 1)};
}

veredicto bloques_borrados(enlace& e, avance& a) {
  e.control_serie.descartar_entrada();
  e.control_serie.InputLen(47);
  e.control_serie.RThreshold(47);
  std::int64_t acumulado = 0;
  for (int i = 0; i < bloques_examinados; ++i) {
    const tramo donde = tramo_de_bloque(i);
    avanzar_progreso(a, total_flash, chip.bloque, acumulado);
    a.mapa.examinar(donde);
    const auto respuesta = examinar(e, comando_de_bloque(donde), sobrante::interrumpe);
    if (!respuesta) return veredicto::ninguno;
    const bool borrado = campo(*respuesta, 35, 2) == "FF";
    borrado ? a.mapa.borrado(donde) : a.mapa.no_borrado(donde);
    if (!borrado) return veredicto::no;
    a.labor.hechos += chip.bloque;
  }
  return veredicto::si;
}

veredicto examinar_borrado(enlace& e, avance& a) {
  const labor_en_curso en_curso(a, e.plat, labor::clase::verificar, std::int64_t{bloques_examinados} * chip.bloque);
  const auto primera = examinar(e, comando_de_bloque({0, 1}), sobrante::interrumpe);
  if (!primera) return veredicto::ninguno;
  if (campo(*primera, 3, 2) == "FF") return bloques_borrados(e, a);
  a.mapa.no_borrado({0, 1});
  return veredicto::no;
}

/// The number in a field of eight digits. A field that is no number breaks the operation off: it says nothing of the
/// chip.
std::optional<std::uint32_t> suma_de(enlace& e, std::string_view digitos) {
  const bool numero = digitos.size() == 8 && std::ranges::all_of(digitos, [](char c) { return digito_hex(c) >= 0; });
  if (numero) return valor_hex(digitos);
  interrumpir(e);
  return std::nullopt;
}

veredicto comparar_suma(enlace& e, const Variables_grab& v, std::string_view digitos, tramo donde) {
  const auto suya = suma_de(e, digitos);
  if (!suya) return veredicto::ninguno;
  const std::string nuestra = suma_rango(v, donde.desde, donde.hasta - donde.desde - 1);
  return *suya == valor_hex(nuestra) ? veredicto::si : veredicto::no;
}

/// How many bytes the blocks up to the one that holds `dir_max` have.
std::int64_t bytes_a_sumar(const Variables_grab& v) {
  return std::min(v.dir_max / chip.bloque + 1, total_flash / chip.bloque) * std::int64_t{chip.bloque};
}

veredicto comparar_bloques(enlace& e, const Variables_grab& v, avance& a) {
  e.control_serie.descartar_entrada();
  e.control_serie.RThreshold(47);
  std::int64_t acumulado = 0;
  for (int i = 1; i <= bloques_examinados; ++i) {
    const tramo donde = tramo_de_bloque(i - 1);
    if (donde.desde >= total_flash) break;
    avanzar_progreso(a, bloques_examinados, i, acumulado);
    a.mapa.examinar(donde);
    const auto respuesta = examinar(e, comando_de_bloque(donde), sobrante::se_tolera);
    if (!respuesta) return veredicto::ninguno;
    const veredicto este = comparar_suma(e, v, campo(*respuesta, 37, 8), donde);
    if (este != veredicto::ninguno) a.mapa.comparado(donde, este == veredicto::si);
    if (este != veredicto::si) return este;
    a.labor.hechos += chip.bloque;
    if (donde.hasta > v.dir_max) return veredicto::si_hasta_el_tope;
  }
  return veredicto::si;
}

veredicto examinar_sumas(enlace& e, const Variables_grab& v, avance& a) {
  // What no file sets begins there.
  constexpr tramo principio{0, chip.configuracion.desde + 1};
  const labor_en_curso en_curso(a, e.plat, labor::clase::verificar, bytes_a_sumar(v));
  a.mapa.empezar_verificacion();
  const auto primera = examinar(e, comando_de_bloque(principio), sobrante::se_tolera);
  if (!primera) return veredicto::ninguno;
  const veredicto este = comparar_suma(e, v, *primera, principio);
  if (este == veredicto::no) a.mapa.comparado(principio, false);
  return este == veredicto::si ? comparar_bloques(e, v, a) : este;
}

bool iguales(const Variables_grab& v, std::string_view respuesta, std::int32_t base) {
  for (std::int32_t k = 0; k < 16; ++k) {
    const std::int32_t dir = base + k;
    if (hay_celda(dir) && v.buffer_salida[static_cast<std::size_t>(dir)] != byte_leido(respuesta, k)) return false;
  }
  return true;
}

bool difieren(enlace& e, avance& a) {
  preguntar(e, {"Error en verificación", "Los datos no coinciden"});
  if (!e.respuesta_lista) e.linea_inquieta = true;
  a.Progress.Value = 0;
  return false;
}

/// Notes the 16 bytes below `dir` on the map, where equal ones count once their cell is complete.
void anotar_grupo(avance& a, std::int32_t dir, bool igual) {
  a.labor.hechos += 16;
  if (!igual) {
    a.mapa.comparado({dir - 16, dir}, false);
  } else if (dir % bytes_por_celda == 0) {
    a.mapa.comparado({dir - bytes_por_celda, dir}, true);
  }
}

/// False when the comparison has ended with a difference.
bool comparar_grupos(enlace& e, const Variables_grab& v, avance& a, std::int32_t hasta) {
  const labor_en_curso en_curso(a, e.plat, labor::clase::verificar, hasta);
  a.mapa.empezar_verificacion();
  std::int64_t acumulado = 0;
  std::int32_t dir = 0;
  const int resets = e.operacion.resets;
  std::string anterior;
  enviar_comando(e, comando_de_lectura(0, "16"));
  esperar_datos(e);
  interrumpir_tras_reset(e, resets);
  while (dir < hasta && !a.cancelar && puede_seguir(e) && !e.operacion.sin_respuesta) {
    dir += 16;
    anterior = e.respuesta;
    enviar_comando(e, comando_de_lectura(dir, "16"));
    const bool igual = iguales(v, anterior, dir - 16);
    if (anterior.starts_with('0')) anotar_grupo(a, dir, igual);
    if (!igual) return difieren(e, a);
    avanzar_progreso(a, hasta, 16, acumulado);
    esperar_datos(e);
    interrumpir_tras_reset(e, resets);
  }
  if (dir >= hasta && puede_seguir(e) && !e.operacion.sin_respuesta) {
    preguntar(e, {"Atención", "La verificación ha sido exitosa"});
  }
  return true;
}

}  // namespace

void verificar_borrado(enlace& e, avance& a) {
  veredicto v = veredicto::ninguno;
  {
    const modo_fijo modo(e.control_serie, 15, 15);
    v = examinar_borrado(e, a);
    if (v == veredicto::no) decir(e, "La Flash contiene datos, no está borrada");
  }
  cerrar_chip(e, esperar_datos);
  cerrar_puerto(e);
  if (v == veredicto::si) decir(e, "La Flash ha sido verificada, está borrada");
}

void verificar_sumas(enlace& e, const Variables_grab& v, avance& a) {
  constexpr const char* correcto = "El programa de la Flash ha sido verificado, está correcto";
  veredicto este = veredicto::ninguno;
  {
    const modo_fijo modo(e.control_serie, 0, 16);
    este = examinar_sumas(e, v, a);
    if (este == veredicto::no) decir(e, "El programa contenido en la Flash difiere del cargado en el buffer");
    if (este == veredicto::si_hasta_el_tope) {
      a.Progress.Value = a.Progress.Max;
      decir(e, correcto);
    }
  }
  cerrar_chip(e, esperar_datos);
  cerrar_puerto(e);
  if (este == veredicto::si) decir(e, correcto);
}

void comparar_flash(enlace& e, const Variables_grab& v, avance& a, std::int32_t hasta) {
  a.time_fin.Text = "";
  a.time_ini.Text = e.plat.hora();
  if (!comparar_grupos(e, v, a, hasta)) return;
  a.Progress.Value = 0;
  a.cancelar = false;
}

std::string suma_rango(const Variables_grab& v, std::int32_t desde, std::int32_t cuenta) {
  std::uint32_t suma = 0;
  for (std::int64_t dir = desde; dir <= std::int64_t{desde} + cuenta && hay_celda(dir); ++dir) {
    suma += v.buffer_salida[static_cast<std::size_t>(dir)];
  }
  return hex(suma);
}

}  // namespace morvane
