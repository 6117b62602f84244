#include "shell/proyecto.h"

#include <filesystem>

#include "image/cargar_s19.h"
#include "link/puerto.h"
#include "platform/texto.h"

namespace morvane {

namespace {

/// Characters of the tail that the status bar shows, and the length from which the front is cut.
constexpr std::size_t cola_estado = 45;
constexpr std::size_t corte_estado = 41;

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

bool rechazada_por_orden(frm_principal& f) {
  if (f.ordenes == 0) return false;
  preguntar(f.link,
            {"Atención", "Hay una operación en curso. Espere a que termine, o deténgala, antes de abrir un archivo",
             botones::Aceptar, icono::exclamacion});
  return true;
}

bool desea_el_mismo(frm_principal& f) {
  if (sin_blancos(f.v.ruta_archivo).empty()) return false;
  return preguntar(f.link, {"Atención", "Desea cargar el mismo proyecto?", botones::SiNo, icono::informacion}) == vbYes;
}

void olvidar_proyecto(frm_principal& f) {
  f.v.dir_max = 0;
  f.estado.panel(1).Text = "";
}

}  // namespace

std::string extension_de(std::string_view ruta) {
  const std::size_t largo = longitud(ruta);
  return mayusculas(sin_blancos(largo < 3 ? ruta : trozo(ruta, largo - 2, 3)));
}

void abrir_proyecto(frm_principal& f) {
  if (rechazada_por_orden(f)) return;
  const orden_en_curso orden(f);
  if (desea_el_mismo(f)) return cargar_proyecto(f, extension_de(f.v.ruta_archivo));

  const directorio_actual restaurar;
  f.v.ruta_archivo = f.plat.ShowOpen(f.cmd_buscar);
  if (sin_blancos(f.v.ruta_archivo).empty()) return olvidar_proyecto(f);
  guardar_ajustes(f.link);
  cargar_proyecto(f, extension_de(f.v.ruta_archivo));
}

void cargar_proyecto(frm_principal& f, std::string_view extension) {
  f.cargando = true;
  limpiar_buffer_salida(f.v);
  mostrar_ruta(f, f.v.ruta_archivo);
  if (extension == "S19") cargar_s19(f.plat, f.v, f.progreso);
  f.cargando = false;
}

void mostrar_ruta(frm_principal& f, std::string_view ruta) {
  const std::size_t largo = longitud(ruta);
  std::size_t inicio = 1;
  if (largo > corte_estado) {
    const std::size_t sobra = largo > cola_estado - 2 ? largo - (cola_estado - 2) : (cola_estado - 2) - largo;
    inicio = sobra == 0 ? 1 : sobra;
  }
  f.estado.panel(1).Text = std::string(trozo(ruta, 1, 3)) + "..." + std::string(trozo(ruta, inicio, cola_estado));
}

}  // namespace morvane
