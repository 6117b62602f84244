#include "fallo_carga.h"

namespace morvane {

std::string fallo_de_linea(std::uint64_t numero, std::string_view motivo) {
  return "Línea " + std::to_string(numero) + ": " + std::string(motivo);
}

std::string fallo_de_archivo(std::string_view motivo) {
  return "Motivo: " + std::string(motivo);
}

void desechar_carga(Variables_grab& v) {
  limpiar_buffer_salida(v);
  v.dir_max = 0;
}

void avisar_fallo_carga(plataforma& plat, const Variables_grab& v, const std::string& detalle) {
  plat.MsgBox({.titulo = "Atención",
               .texto = "No se ha podido cargar el archivo:\r\n" + v.ruta_archivo + "\r\n" + detalle,
               .teclas = botones::Aceptar,
               .dibujo = icono::critico});
}

}  // namespace morvane
