#include "files/texto.h"
#include "flash/leer.h"
#include "link/corchete.h"
#include "shell/ordenes.h"

namespace morvane {

namespace {

constexpr std::int64_t ultima_direccion = total_flash - 1;
constexpr std::int64_t paso_rango = 16;

/// The value of a box, as a signed number of 32 bits.
std::int64_t valor_de(const TextBox& caja) {
  return static_cast<std::int32_t>(valor_hex(caja.Text.valor()));
}

std::int64_t bajar(std::int64_t dir) {
  return dir & ~(paso_rango - 1);
}

/// Start of the range: lowered to a multiple of 16; below 16 it is 0, and the box shows that.
std::int64_t corregir_desde(TextBox& txt_desde) {
  const std::int64_t desde = valor_de(txt_desde);
  if (desde % paso_rango == 0) return desde;
  if (desde > paso_rango) return bajar(desde);
  txt_desde.Text = "000000";
  return 0;
}

/// End of the range: one above the next multiple of 16, or as it is near the end of the flash, where the box shows
/// that.
std::int64_t corregir_hasta(TextBox& txt_hasta) {
  std::int64_t hasta = valor_de(txt_hasta);
  if (hasta % paso_rango != 0) {
    if (hasta + paso_rango > ultima_direccion) {
      txt_hasta.Text = hex(ultima_direccion, 6);
    } else {
      hasta = bajar(hasta) + paso_rango + 1;
    }
  }
  if (hasta <= ultima_direccion) return hasta;
  txt_hasta.Text = hex(ultima_direccion, 6);
  return ultima_direccion;
}

bool vacia(const TextBox& caja) {
  return sin_blancos(caja.Text.valor()).empty();
}

void leer_lo_programado(frm_principal& f) {
  if (f.v.dir_max_grabada == 0) {
    f.rango.fra_rango.Visible = true;
    return;
  }
  f.v.dir_fin_lectura = f.v.dir_max_grabada;
  leer_flash(f.link, f.v, f.avance, 0, f.v.dir_max_grabada);
  f.avance.Progress.Value = 0;
  cerrar_chip(f.link, esperar_con_vigilancia);
}

}  // namespace

void men_leer_ft_Click(frm_principal& f) {
  if (rechazada_por_carga(f)) return;
  const orden_en_curso orden(f);
  enlace& e = f.link;
  f.avance.cancelar = false;
  corchete c(e);
  if (!c.abierto()) return;
  modo_caracter(e.control_serie);
  abrir_chip(e, esperar_con_vigilancia);
  if (!e.tiempo_agotado) puede_seguir(e) ? leer_lo_programado(f) : cerrar_chip(e, esperar_con_vigilancia);
  c.terminar();
}

void men_leer_fr_Click(frm_principal& f) {
  f.rango.fra_rango.Visible = true;
}

void btn_leer_Click(frm_principal& f) {
  if (vacia(f.rango.txt_desde) || vacia(f.rango.txt_hasta) || rechazada_por_carga(f)) return;
  const std::int64_t desde = corregir_desde(f.rango.txt_desde);
  const std::int64_t hasta = corregir_hasta(f.rango.txt_hasta);
  // The box may change while the chip is opened.
  const std::int64_t fin = valor_de(f.rango.txt_hasta);
  const orden_en_curso orden(f);
  enlace& e = f.link;
  f.avance.cancelar = false;
  corchete c(e);
  if (!c.abierto()) return;
  abrir_chip(e, esperar_con_vigilancia);
  if (!e.tiempo_agotado && puede_seguir(e)) {
    f.v.dir_fin_lectura = static_cast<std::int32_t>(fin);
    leer_flash(e, f.v, f.avance, static_cast<std::int32_t>(desde), static_cast<std::int32_t>(hasta));
    f.rango.fra_rango.Visible = false;
  }
  c.terminar();
}

}  // namespace morvane
