#include "flash/leer.h"

#include "flash/bloque.h"
#include "link/esperas.h"
#include "link/tramas.h"

namespace morvane {

namespace {

constexpr std::int64_t bytes_por_bloque = 32;

void pedir(enlace& e, std::int64_t dir) {
  enviar_comando(e, comando_de_lectura(dir, "20"));
}

void guardar(Variables_grab& v, std::string_view respuesta, std::int64_t base) {
  for (std::int64_t k = 0; k < bytes_por_bloque; ++k) {
    if (hay_celda(base + k)) v.buffer_entrada[static_cast<std::size_t>(base + k)] = byte_leido(respuesta, k);
  }
}

/// Asks for block after block; while one is under way the one before is stored.
void leer_bloques(enlace& e, Variables_grab& v, avance& a, std::int64_t desde, std::int64_t hasta) {
  std::int64_t dir = desde, acumulado = 0;
  const int resets = e.corte.resets;
  std::string anterior;
  pedir(e, dir);
  esperar_respuesta(e);
  interrumpir_tras_reset(e, resets);
  while (dir < hasta && !a.cancelar && puede_seguir(e)) {
    dir += bytes_por_bloque;
    anterior = e.respuesta;
    pedir(e, dir);
    guardar(v, anterior, dir - bytes_por_bloque);
    avanzar_progreso(a, hasta, bytes_por_bloque, acumulado);
    esperar_respuesta(e);
    interrumpir_tras_reset(e, resets);
  }
  if (e.corte.interrumpida) return;
  guardar(v, e.respuesta, dir);
  avanzar_progreso(a, hasta, bytes_por_bloque, acumulado);
}

void avisar_final(enlace& e, const avance& a) {
  if (!puede_seguir(e) || e.corte.sin_respuesta) return;
  if (a.cancelar) {
    preguntar(e, {"Atención", "El proceso de Upload ha sido detenido por el usuario"});
  } else {
    preguntar(e, {"", "¡Ha terminado de Leer!"});
  }
}

}  // namespace

void leer_flash(enlace& e, Variables_grab& v, avance& a, std::int32_t desde, std::int32_t hasta) {
  limpiar_buffer_entrada(v);
  a.time_fin.Text = "";
  a.time_ini.Text = e.plat.hora();
  if (desde >= 0) leer_bloques(e, v, a, desde, hasta);
  a.time_fin.Text = e.plat.hora();
  avisar_final(e, a);
  a.Progress.Value = 0;
  a.cancelar = false;
}

}  // namespace morvane
