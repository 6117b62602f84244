#include "shell/ordenes.h"

#include "flash/borrar.h"
#include "flash/grabar.h"
#include "link/corchete.h"

namespace morvane {

bool rechazada_por_carga(frm_principal& f) {
  if (!f.cargando) return false;
  preguntar(f.link, {"Atención", "Se está cargando un archivo. Espere a que termine la carga", botones::Aceptar,
                     icono::exclamacion});
  return true;
}

bool hay_programa(frm_principal& f) {
  if (f.v.dir_max >= 1) return true;
  preguntar(f.link, {"Atención", "Debe cargar un programa antes de grabar"});
  return false;
}

void men_borrar_t_Click(frm_principal& f) {
  if (rechazada_por_carga(f)) return;
  const orden_en_curso orden(f);
  enlace& e = f.link;
  f.avance.cancelar = false;
  corchete c(e);
  if (!c.abierto()) return;
  abrir_chip(e, esperar_con_vigilancia);
  if (!e.tiempo_agotado) {
    if (borrar_flash(e, f.avance)) {
      preguntar(e, {"Atención", "¡Ha terminado de borrar!"}, {.que = asunto::borrada_entera});
      f.avance.Progress.Value = 0;
    }
    cerrar_chip(e, esperar_con_vigilancia);
  }
  c.terminar();
}

void men_prog_t_Click(frm_principal& f) {
  if (rechazada_por_carga(f)) return;
  const orden_en_curso orden(f);
  enlace& e = f.link;
  f.avance.cancelar = false;
  corchete c(e);
  if (!c.abierto()) return;
  abrir_chip(e, esperar_con_vigilancia);
  if (!e.tiempo_agotado) {
    borrar_y_programar(e, f.v, f.avance);
    f.avance.Progress.Value = 0;
    cerrar_chip(e, esperar_con_vigilancia);
  }
  c.terminar();
}

void men_salir_Click(frm_principal& f) {
  terminar_programa(f.link);
}

}  // namespace morvane
