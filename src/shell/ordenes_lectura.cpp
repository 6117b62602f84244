#include <algorithm>

#include "files/texto.h"
#include "flash/leer.h"
#include "frases/numeros.h"
#include "link/corchete.h"
#include "shell/ordenes.h"

namespace morvane {

namespace {

constexpr std::int64_t ultima_direccion = total_flash - 1;
constexpr std::int64_t paso_rango = 16;

/// The value of a box, as a signed number of 32 bits.
std::int64_t valor_de(std::string_view texto) {
  return static_cast<std::int32_t>(valor_hex(texto));
}

std::int64_t bajar(std::int64_t dir) {
  return dir & ~(paso_rango - 1);
}

/// One end of a range as it will be used, and what its box then shows, if that is something else.
struct extremo {
  std::int64_t dir;
  std::optional<std::string> en_la_caja{};
};

/// Start of the range: lowered to a multiple of 16; below 16 it is 0, and the box shows that.
extremo corregir_desde(std::string_view texto) {
  const std::int64_t desde = valor_de(texto);
  if (desde % paso_rango == 0) return {desde};
  if (desde > paso_rango) return {bajar(desde)};
  return {0, "000000"};
}

/// End of the range: one above the next multiple of 16, or as it is near the end of the flash, where the box shows
/// that.
extremo corregir_hasta(std::string_view texto) {
  extremo e{valor_de(texto)};
  const std::string ultima = hex(ultima_direccion, 6);
  if (e.dir % paso_rango != 0) {
    if (e.dir + paso_rango > ultima_direccion) {
      e.en_la_caja = ultima;
    } else {
      e.dir = bajar(e.dir) + paso_rango + 1;
    }
  }
  return e.dir <= ultima_direccion ? e : extremo{ultima_direccion, ultima};
}

std::int64_t poner(TextBox& caja, const extremo& e) {
  if (e.en_la_caja) caja.Text = *e.en_la_caja;
  return e.dir;
}

bool en_blanco(std::string_view texto) {
  return sin_blancos(texto).empty();
}

bool es_hexadecimal(std::string_view texto) {
  return std::ranges::all_of(texto, [](char c) { return digito_hex(c) >= 0; });
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

lectura_prevista prever_lectura(std::string_view desde, std::string_view hasta) {
  if (en_blanco(desde) || en_blanco(hasta)) return {"Escriba las dos direcciones", false};
  const auto primera = static_cast<std::int32_t>(corregir_desde(desde).dir);
  const auto ultima = static_cast<std::int32_t>(corregir_hasta(hasta).dir);
  const tramo donde = alcance_de_lectura(primera, ultima);
  const tramo dentro{donde.desde, std::min(donde.hasta, total_flash)};
  if (dentro.vacio()) return {"No se leerá nada: no es de la flash", true};
  const bool dudosa = !es_hexadecimal(desde) || !es_hexadecimal(hasta) || valor_de(hasta) < valor_de(desde);
  return {"Se leerá " + direcciones(dentro), dudosa};
}

void btn_leer_Click(frm_principal& f) {
  panel_rango& r = f.rango;
  if (en_blanco(r.txt_desde.Text.valor()) || en_blanco(r.txt_hasta.Text.valor()) || rechazada_por_carga(f)) return;
  const std::int64_t desde = poner(r.txt_desde, corregir_desde(r.txt_desde.Text.valor()));
  const std::int64_t hasta = poner(r.txt_hasta, corregir_hasta(r.txt_hasta.Text.valor()));
  // The box may change while the chip is opened.
  const std::int64_t fin = valor_de(r.txt_hasta.Text.valor());
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
