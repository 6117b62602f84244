#include "shell/proyecto.h"

#include <filesystem>

#include "image/cargar_bin.h"
#include "image/cargar_s19.h"
#include "link/puerto.h"
#include "platform/texto.h"
#include "shell/historial.h"

namespace morvane {

namespace {

/// Puts the process's current directory back, wherever a dialog has led it.
class directorio_actual {
 public:
  directorio_actual() : antes_(std::filesystem::current_path(error_)) {}
  ~directorio_actual() {
    if (!error_) std::filesystem::current_path(antes_, error_);
  }
  directorio_actual(const directorio_actual&) = delete;
  directorio_actual& operator=(const directorio_actual&) = delete;

 private:
  std::error_code error_;
  std::filesystem::path antes_;
};

/// Yes: the same file again; No: another one; anything else: neither.
respuesta_caja desea_el_mismo(frm_principal& f) {
  if (sin_blancos(f.v.ruta_archivo).empty()) return vbNo;
  return preguntar(f.link, {"Atención", "Desea cargar el mismo proyecto?", botones::SiNo, icono::informacion});
}

void olvidar_proyecto(frm_principal& f) {
  f.v.dir_max = 0;
  f.estado.panel(1).Text = "";
}

}  // namespace

bool rechazada_por_orden(frm_principal& f) {
  if (f.ordenes == 0) return false;
  preguntar(f.link,
            {"Atención", "Hay una operación en curso. Espere a que termine, o deténgala, antes de abrir un archivo",
             botones::Aceptar, icono::exclamacion});
  return true;
}

std::string extension_de(std::string_view ruta) {
  const std::size_t largo = longitud(ruta);
  return mayusculas(sin_blancos(largo < 3 ? ruta : trozo(ruta, largo - 2, 3)));
}

void abrir_proyecto(frm_principal& f) {
  if (rechazada_por_orden(f)) return;
  const orden_en_curso orden(f);
  const respuesta_caja respuesta = desea_el_mismo(f);
  if (respuesta == vbYes) {
    actualizar_historial(f, f.v.ruta_archivo);
    return cargar_proyecto(f, extension_de(f.v.ruta_archivo));
  }
  if (respuesta != vbNo) return;

  const directorio_actual restaurar;
  f.v.ruta_archivo = f.plat.ShowOpen(f.cmd_buscar);
  if (sin_blancos(f.v.ruta_archivo).empty()) return olvidar_proyecto(f);
  actualizar_historial(f, f.v.ruta_archivo);
  guardar_ajustes(f.link);
  cargar_proyecto(f, extension_de(f.v.ruta_archivo));
}

void cargar_proyecto(frm_principal& f, std::string_view extension) {
  f.cargando = true;
  limpiar_buffer_salida(f.v);
  f.progreso.mapa.nueva_imagen(f.v.buffer_salida);
  mostrar_ruta(f, f.v.ruta_archivo);
  if (extension == "BIN") {
    cargar_bin(f.plat, f.v);
  } else if (extension == "S19") {
    cargar_s19(f.plat, f.v, f.progreso);
  }
  f.progreso.mapa.nueva_imagen(f.v.buffer_salida);
  f.cargando = false;
}

std::size_t inicio_de_cola(std::size_t largo, std::size_t corte, std::size_t visible) {
  if (largo < corte) return 1;
  const std::size_t inicio = largo > visible ? largo - visible : visible - largo;
  return inicio == 0 ? 1 : inicio;
}

std::string ruta_abreviada(std::string_view ruta, std::size_t inicio, std::size_t cola) {
  return std::string(trozo(ruta, 1, 3)) + "..." + std::string(trozo(ruta, inicio, cola));
}

void mostrar_ruta(frm_principal& f, std::string_view ruta) {
  constexpr std::size_t corte = 42, cola = 45, visible = 43;
  f.estado.panel(1).Text = ruta_abreviada(ruta, inicio_de_cola(longitud(ruta), corte, visible), cola);
}

}  // namespace morvane
