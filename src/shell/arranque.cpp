#include <filesystem>

#include "link/corchete.h"
#include "link/puerto.h"
#include "shell/frm_principal.h"
#include "shell/historial.h"

namespace morvane {

namespace {

void sondear_puente(enlace& e) {
  const corchete c(e);
  if (!c.abierto()) return;
  abrir_chip(e, esperar_con_vigilancia);
  if (!e.tiempo_agotado) cerrar_chip(e, esperar_con_vigilancia);
}

}  // namespace

void Form_Load(frm_principal& f) {
  const orden_en_curso orden(f);
  f.link.valores.ruta_aplicacion = f.link.ficheros.ruta_aplicacion();
  std::error_code sin_importancia;
  std::filesystem::current_path(f.link.ficheros.directorio(), sin_importancia);
  leer_historial(f);
  limpiar_buffer_salida(f.v);
  leer_ajustes(f.link);
  sondear_puente(f.link);
}

}  // namespace morvane
