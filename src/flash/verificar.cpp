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

void decir(enlace& e, const char* texto, const hechos& de_que) {
  preguntar(e, {"Atención", texto, botones::Aceptar, icono::informacion}, de_que);
}

hechos hechos_en(asunto que, tramo donde) {
  return {.que = que, .desde = donde.desde, .hasta = donde.hasta};
}

void dar_por_hecha(avance& a, tramo donde) {
  a.labor.como = labor::final::hecha;
  a.labor.donde = donde;
}

void dar_por_distinta(avance& a, tramo donde) {
  a.labor.como = labor::final::distinta;
  a.labor.donde = donde;
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
  if ((sobra && si_sobra == sobrante::interrumpe) || ajena(e)) interrumpir(e, rotura::ajena);
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
    a.labor.donde = {0, donde.desde};
    const auto respuesta = examinar(e, comando_de_bloque(donde), sobrante::interrumpe);
    if (!respuesta) return veredicto::ninguno;
    const bool borrado = campo(*respuesta, 35, 2) == "FF";
    borrado ? a.mapa.borrado(donde) : a.mapa.no_borrado(donde);
    if (!borrado) {
      dar_por_distinta(a, donde);
      return veredicto::no;
    }
    a.labor.hechos += chip.bloque;
  }
  dar_por_hecha(a, {0, total_flash});
  return veredicto::si;
}

veredicto examinar_borrado(enlace& e, avance& a) {
  const labor_en_curso en_curso(a, e.plat, labor::clase::examinar, std::int64_t{bloques_examinados} * chip.bloque);
  const auto primera = examinar(e, comando_de_bloque({0, 1}), sobrante::interrumpe);
  if (!primera) return veredicto::ninguno;
  if (campo(*primera, 3, 2) == "FF") return bloques_borrados(e, a);
  a.mapa.no_borrado({0, 1});
  dar_por_distinta(a, {0, 1});
  return veredicto::no;
}

/// The number in a field of eight digits. A field that is no number breaks the operation off: it says nothing of the
/// chip.
std::optional<std::uint32_t> suma_de(enlace& e, std::string_view digitos) {
  const bool numero = digitos.size() == 8 && std::ranges::all_of(digitos, [](char c) { return digito_hex(c) >= 0; });
  if (numero) return valor_hex(digitos);
  interrumpir(e, rotura::ajena);
  return std::nullopt;
}

/// The verdict on the sums, and the facts that are told with it: the two sums that differ, or what was looked at.
struct juicio {
  veredicto cual = veredicto::ninguno;
  hechos razones{};
};

juicio comparar_suma(enlace& e, const Variables_grab& v, std::string_view digitos, tramo donde) {
  const auto suya = suma_de(e, digitos);
  if (!suya) return {};
  const std::uint32_t nuestra = valor_hex(suma_rango(v, donde.desde, donde.hasta - donde.desde - 1));
  hechos razones = hechos_en(*suya == nuestra ? asunto::sumas_iguales : asunto::suma_distinta, donde);
  razones.debe = nuestra;
  razones.hay = *suya;
  return {*suya == nuestra ? veredicto::si : veredicto::no, razones};
}

/// As the map and the progress are told.
void anotar(avance& a, const juicio& este, tramo donde) {
  if (este.cual == veredicto::ninguno) return;
  a.mapa.comparado(donde, este.cual == veredicto::si);
  if (este.cual == veredicto::no) dar_por_distinta(a, donde);
}

/// How many bytes the blocks up to the one that holds `dir_max` have.
std::int64_t bytes_a_sumar(const Variables_grab& v) {
  return std::min(v.dir_max / chip.bloque + 1, total_flash / chip.bloque) * std::int64_t{chip.bloque};
}

juicio hasta_aqui(avance& a, veredicto cual, tramo donde) {
  dar_por_hecha(a, donde);
  return {cual, hechos_en(asunto::sumas_iguales, donde)};
}

juicio comparar_bloques(enlace& e, const Variables_grab& v, avance& a) {
  e.control_serie.descartar_entrada();
  e.control_serie.RThreshold(47);
  std::int64_t acumulado = 0;
  for (int i = 1; i <= bloques_examinados; ++i) {
    const tramo donde = tramo_de_bloque(i - 1);
    if (donde.desde >= total_flash) break;
    avanzar_progreso(a, bloques_examinados, i, acumulado);
    a.mapa.examinar(donde);
    a.labor.donde = {0, donde.desde};
    const auto respuesta = examinar(e, comando_de_bloque(donde), sobrante::se_tolera);
    if (!respuesta) return {};
    const juicio este = comparar_suma(e, v, campo(*respuesta, 37, 8), donde);
    anotar(a, este, donde);
    if (este.cual != veredicto::si) return este;
    a.labor.hechos += chip.bloque;
    if (donde.hasta > v.dir_max) return hasta_aqui(a, veredicto::si_hasta_el_tope, {0, donde.hasta});
  }
  return hasta_aqui(a, veredicto::si, {0, total_flash});
}

juicio examinar_sumas(enlace& e, const Variables_grab& v, avance& a) {
  // What no file sets begins there.
  constexpr tramo principio{0, chip.configuracion.desde + 1};
  const labor_en_curso en_curso(a, e.plat, labor::clase::verificar, bytes_a_sumar(v));
  a.mapa.empezar_verificacion();
  const auto primera = examinar(e, comando_de_bloque(principio), sobrante::se_tolera);
  if (!primera) return {};
  const juicio este = comparar_suma(e, v, *primera, principio);
  if (este.cual == veredicto::si) return comparar_bloques(e, v, a);
  anotar(a, este, principio);
  return este;
}

/// The first of 16 bytes that is not what `v` has there; `bytes_iguales` if all are.
hechos diferencia(const Variables_grab& v, std::string_view respuesta, std::int32_t base) {
  for (std::int32_t k = 0; k < 16; ++k) {
    const std::int32_t dir = base + k;
    if (!hay_celda(dir)) continue;
    const std::uint8_t debe = v.buffer_salida[static_cast<std::size_t>(dir)], hay = byte_leido(respuesta, k);
    if (debe == hay) continue;
    hechos razones = hechos_en(asunto::byte_distinto, {dir, dir + 1});
    razones.debe = debe;
    razones.hay = hay;
    return razones;
  }
  return hechos_en(asunto::bytes_iguales, {base, base + 16});
}

bool difieren(enlace& e, avance& a, const hechos& razones) {
  dar_por_distinta(a, {razones.desde, razones.hasta});
  preguntar(e, {"Error en verificación", "Los datos no coinciden"}, razones);
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
    const hechos razones = diferencia(v, anterior, dir - 16);
    const bool igual = razones.que == asunto::bytes_iguales;
    if (anterior.starts_with('0')) anotar_grupo(a, dir, igual);
    if (!igual) return difieren(e, a, razones);
    avanzar_progreso(a, hasta, 16, acumulado);
    esperar_datos(e);
    interrumpir_tras_reset(e, resets);
  }
  a.labor.donde = {0, dir};
  if (!puede_seguir(e) || e.operacion.sin_respuesta) return true;
  a.labor.como = dir >= hasta ? labor::final::hecha : labor::final::detenida;
  if (dir >= hasta) {
    preguntar(e, {"Atención", "La verificación ha sido exitosa"}, hechos_en(asunto::bytes_iguales, {0, dir}));
  }
  return true;
}

}  // namespace

void verificar_borrado(enlace& e, avance& a) {
  veredicto v = veredicto::ninguno;
  {
    const modo_fijo modo(e.control_serie, 15, 15);
    v = examinar_borrado(e, a);
    if (v == veredicto::no) {
      decir(e, "La Flash contiene datos, no está borrada", hechos_en(asunto::con_datos, a.labor.donde));
    }
  }
  cerrar_chip(e, esperar_datos);
  cerrar_puerto(e);
  if (v == veredicto::si) {
    decir(e, "La Flash ha sido verificada, está borrada", hechos_en(asunto::en_blanco, a.labor.donde));
  }
}

void verificar_sumas(enlace& e, const Variables_grab& v, avance& a) {
  constexpr const char* correcto = "El programa de la Flash ha sido verificado, está correcto";
  juicio este;
  {
    const modo_fijo modo(e.control_serie, 0, 16);
    este = examinar_sumas(e, v, a);
    if (este.cual == veredicto::no) {
      decir(e, "El programa contenido en la Flash difiere del cargado en el buffer", este.razones);
    }
    if (este.cual == veredicto::si_hasta_el_tope) {
      a.Progress.Value = a.Progress.Max;
      decir(e, correcto, este.razones);
    }
  }
  cerrar_chip(e, esperar_datos);
  cerrar_puerto(e);
  if (este.cual == veredicto::si) decir(e, correcto, este.razones);
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
