#include "flash/habilitar.h"
#include "flash/proteger.h"
#include "flash/verificar.h"
#include "link/corchete.h"
#include "shell/ordenes.h"

namespace morvane {

namespace {

constexpr const char* titulo_imposible = "No es posible Verificar";

bool verificar_sin_haber_programado(enlace& e) {
  return preguntar(e, {titulo_imposible, "No se ha programado la flash en esta sesión, desea verificar de todas formas",
                       botones::AceptarCancelar, icono::informacion}) == vbOK;
}

/// How far to compare; nothing if the user has been told why not.
std::optional<std::int32_t> tope_de_comparacion(frm_principal& f) {
  const std::int32_t cargada = f.v.dir_max, grabada = f.v.dir_max_grabada;
  if (cargada == 0) {
    preguntar(f.link, {titulo_imposible, "Imposible verificar, no ha cargado ningún programa en el buffer"});
    return std::nullopt;
  }
  if (grabada == 0) return verificar_sin_haber_programado(f.link) ? std::optional(cargada) : std::nullopt;
  if (grabada == cargada) return grabada;
  preguntar(f.link, {titulo_imposible,
                     "          Es posible que la informacion cargada en el buffer sea diferente de la flash\n\r"
                     "Debe abrir el archivo que corresponda al programa de la flash o programar nuevamente la flash"});
  return std::nullopt;
}

void verificar_programa(frm_principal& f) {
  const orden_en_curso orden(f);
  enlace& e = f.link;
  f.avance.cancelar = false;
  corchete c(e);
  if (!c.abierto()) return;
  abrir_chip(e, esperar_con_vigilancia);
  if (!e.tiempo_agotado && puede_seguir(e)) {
    if (const auto tope = tope_de_comparacion(f)) {
      comparar_flash(e, f.v, f.avance, *tope);
      f.avance.Progress.Value = 0;
      cerrar_chip(e, esperar_con_vigilancia);
    }
  } else if (!e.tiempo_agotado) {
    cerrar_chip(e, esperar_con_vigilancia);
  }
  c.terminar();
}

}  // namespace

void men_verific_t_Click(frm_principal& f) {
  if (rechazada_por_carga(f)) return;
  const orden_en_curso orden(f);
  enlace& e = f.link;
  corchete c(e);
  if (!c.abierto()) return;
  abrir_chip(e, esperar_datos);
  if (habilitar_flash(e)) {
    verificar_borrado(e, f.avance);
  } else {
    cerrar_chip(e, esperar_datos);
  }
  f.avance.Progress.Value = 0;
  c.terminar();
}

void mn_verifi_t_f_Click(frm_principal& f) {
  if (rechazada_por_carga(f)) return;
  const orden_en_curso orden(f);
  enlace& e = f.link;
  corchete c(e);
  if (!c.abierto()) return;
  abrir_chip(e, esperar_datos);
  if (habilitar_flash(e)) {
    verificar_sumas(e, f.v, f.avance);
  } else {
    cerrar_chip(e, esperar_datos);
  }
  f.avance.Progress.Value = 0;
  c.terminar();
}

void men_verifi_t_Click(frm_principal& f) {
  if (!rechazada_por_carga(f)) verificar_programa(f);
}

void men_proteger_f_Click(frm_principal& f) {
  if (rechazada_por_carga(f)) return;
  const orden_en_curso orden(f);
  enlace& e = f.link;
  corchete c(e);
  if (!c.abierto()) return;
  abrir_chip(e, esperar_datos);
  if (habilitar_flash(e)) {
    f.avance.mapa.olvidar(chip.palabra_proteccion);
    proteger_flash(e);
  }
  cerrar_chip(e, esperar_datos);
  c.terminar();
}

void men_reset_Click(frm_principal& f) {
  if (rechazada_por_carga(f)) return;
  const orden_en_curso orden(f);
  enlace& e = f.link;
  corchete c(e);
  if (!c.abierto()) return;
  abrir_chip(e, esperar_con_vigilancia);
  {
    const labor_en_curso en_curso(f.avance, e.plat, labor::clase::reiniciar, 0);
    if (habilitar_flash_reset(e) && paso(e, "j")) f.avance.labor.como = labor::final::hecha;
  }
  cerrar_chip(e, esperar_datos);
  c.terminar();
}

}  // namespace morvane
