#include "flash/leer.h"

#include <algorithm>

#include "flash/bloque.h"
#include "link/envio.h"
#include "link/esperas.h"

namespace morvane {

namespace {

constexpr std::int32_t bytes_por_bloque = 32;
/// Code, digits and checksum.
constexpr std::size_t caracteres_de_respuesta = 67;

void pedir(enlace& e, std::int64_t dir) {
  enviar_comando(e, comando_de_lectura(dir, "20"));
}

/// True if `respuesta` is a whole reply that reports no error, so that its bytes are those of the chip.
bool fidedigna(const enlace& e, std::string_view respuesta) {
  return respuesta.size() == caracteres_de_respuesta && respuesta.front() == '0' && !e.operacion.sin_respuesta;
}

/// Notes on the map how what was read compares with the image, byte by byte; equal cells count once they are complete.
void comparar_con_imagen(const Variables_grab& v, mapa_flash& mapa, tramo leido) {
  const auto iguales = [&v](tramo t) {
    return std::equal(v.buffer_entrada.begin() + t.desde, v.buffer_entrada.begin() + t.hasta,
                      v.buffer_salida.begin() + t.desde);
  };
  if (v.dir_max < 1 || leido.hasta > total_flash) return;
  const tramo celda = tramo_de_celda(leido.desde / bytes_por_celda);
  if (!iguales(leido)) mapa.comparado(leido, false);
  if (leido.hasta == celda.hasta && mapa.leido().contiene(celda)) mapa.comparado(celda, iguales(celda));
}

void guardar(const enlace& e, Variables_grab& v, avance& a, std::string_view respuesta, std::int64_t base) {
  for (std::int64_t k = 0; k < bytes_por_bloque; ++k) {
    if (hay_celda(base + k)) v.buffer_entrada[static_cast<std::size_t>(base + k)] = byte_leido(respuesta, k);
  }
  if (hay_celda(base) && fidedigna(e, respuesta)) {
    const auto desde = static_cast<std::int32_t>(base);
    const tramo leido{desde, desde + bytes_por_bloque};
    a.mapa.lectura(leido);
    comparar_con_imagen(v, a.mapa, leido);
  }
  a.labor.hechos += bytes_por_bloque;
}

/// What `leer_bloques` goes over.
std::int64_t bytes_a_leer(std::int64_t desde, std::int64_t hasta) {
  const std::int64_t pasos = hasta > desde ? (hasta - desde + bytes_por_bloque - 1) / bytes_por_bloque : 0;
  return (pasos + 1) * bytes_por_bloque;
}

/// Asks for block after block; while one is under way the one before is stored.
void leer_bloques(enlace& e, Variables_grab& v, avance& a, std::int64_t desde, std::int64_t hasta) {
  const labor_en_curso en_curso(a, e.plat, labor::clase::leer, bytes_a_leer(desde, hasta));
  std::int64_t dir = desde, acumulado = 0;
  a.labor.donde = {static_cast<std::int32_t>(desde), static_cast<std::int32_t>(desde)};
  const int resets = e.operacion.resets;
  std::string anterior;
  pedir(e, dir);
  esperar_respuesta(e);
  interrumpir_tras_reset(e, resets);
  while (dir < hasta && !a.cancelar && puede_seguir(e)) {
    dir += bytes_por_bloque;
    anterior = e.respuesta;
    pedir(e, dir);
    guardar(e, v, a, anterior, dir - bytes_por_bloque);
    avanzar_progreso(a, hasta, bytes_por_bloque, acumulado);
    esperar_respuesta(e);
    interrumpir_tras_reset(e, resets);
  }
  a.labor.donde = {static_cast<std::int32_t>(desde), static_cast<std::int32_t>(dir)};
  if (e.operacion.interrumpida) return;
  a.labor.donde.hasta = static_cast<std::int32_t>(dir + bytes_por_bloque);
  if (puede_seguir(e) && !e.operacion.sin_respuesta) {
    a.labor.como = a.cancelar ? labor::final::detenida : labor::final::hecha;
  }
  guardar(e, v, a, e.respuesta, dir);
  avanzar_progreso(a, hasta, bytes_por_bloque, acumulado);
}

void avisar_fin_lectura(enlace& e, const avance& a, tramo donde) {
  if (!puede_seguir(e) || e.operacion.sin_respuesta) return;
  if (a.cancelar) {
    preguntar(e, {"Atención", "El proceso de Upload ha sido detenido por el usuario"},
              {.que = asunto::lectura_detenida, .desde = donde.desde, .hasta = donde.hasta});
  } else {
    preguntar(e, {"", "¡Ha terminado de Leer!"}, {.que = asunto::leida, .desde = donde.desde, .hasta = donde.hasta});
  }
}

}  // namespace

tramo alcance_de_lectura(std::int32_t desde, std::int32_t hasta) {
  if (desde < 0) return {};
  return {desde, static_cast<std::int32_t>(std::min<std::int64_t>(desde + bytes_a_leer(desde, hasta), INT32_MAX))};
}

void leer_flash(enlace& e, Variables_grab& v, avance& a, std::int32_t desde, std::int32_t hasta) {
  limpiar_buffer_entrada(v);
  a.mapa.empezar_lectura();
  a.time_fin.Text = "";
  a.time_ini.Text = e.plat.hora();
  if (desde >= 0) leer_bloques(e, v, a, desde, hasta);
  a.time_fin.Text = e.plat.hora();
  avisar_fin_lectura(e, a, desde >= 0 ? a.labor.donde : tramo{});
  a.Progress.Value = 0;
  a.cancelar = false;
}

}  // namespace morvane
