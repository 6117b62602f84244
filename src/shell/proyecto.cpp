#include "shell/proyecto.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include "files/texto.h"
#include "frases/frases.h"
#include "image/cargar_bin.h"
#include "image/cargar_s19.h"
#include "link/puerto.h"
#include "platform/rutas.h"
#include "shell/detalles.h"
#include "shell/historial.h"

namespace morvane {

namespace {

/// A kind of firmware file.
struct formato {
  /// As `extension_de` gives it.
  std::string_view extension;
  /// Its name and its pattern for the open dialog, a "|" between them.
  std::string_view filtro;
  void (*cargar)(frm_principal& f);
};

void avisar_fallo_carga(frm_principal& f, const fallo_carga& fallo) {
  f.plat.MsgBox({.titulo = "Atención",
                 .texto = "No se ha podido cargar el archivo:\r\n" + f.v.ruta_archivo + "\r\n" + frase(fallo),
                 .teclas = botones::Aceptar,
                 .dibujo = icono::critico},
                detalles_de_carga(f));
}

/// Ends with a box in any case.
void cargar_proyecto_s19(frm_principal& f) {
  if (const auto fallo = cargar_s19(f.plat, f.v, f.avance)) {
    avisar_fallo_carga(f, *fallo);
  } else {
    f.plat.MsgBox({.titulo = "", .texto = "Ha terminado de cargar el archivo"}, detalles_de_carga(f));
  }
  f.avance.Progress.Value = 0;
  f.avance.cancelar = false;
}

/// Silent when it succeeds.
void cargar_proyecto_bin(frm_principal& f) {
  if (const auto fallo = cargar_bin(f.plat, f.v)) avisar_fallo_carga(f, *fallo);
}

/// In the order in which the open dialog offers them.
constexpr std::array formatos{
    formato{"S19", "S-Record (*.s19)|*.s19", cargar_proyecto_s19},
    formato{"BIN", "Binario (*.bin)|*.bin", cargar_proyecto_bin},
};

/// Null if there is no such kind.
const formato* formato_de(std::string_view extension) {
  const auto* const cual = std::ranges::find(formatos, extension, &formato::extension);
  return cual == formatos.end() ? nullptr : cual;
}

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
  f.v.carga = {};
  ++f.cargas;
  f.estado.panel(1).Text = "";
  f.estado.panel(1).ToolTipText = "";
}

void abrir_elegido(frm_principal& f, const std::string& ruta) {
  f.v.ruta_archivo = ruta;
  if (sin_blancos(ruta).empty()) return olvidar_proyecto(f);
  actualizar_historial(f, ruta);
  guardar_ajustes(f.link);
  cargar_proyecto(f, extension_de(ruta));
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

bool es_firmware(std::string_view ruta) {
  return formato_de(extension_de(ruta)) != nullptr;
}

std::string filtro_de_firmware() {
  std::string filtro;
  for (const formato& uno : formatos) filtro.append(filtro.empty() ? "" : "|").append(uno.filtro);
  return filtro;
}

std::string carpeta_de_partida(const frm_principal& f) {
  std::error_code error;
  const std::filesystem::path ultima = ruta_de(f.ultimo_archivo).parent_path();
  if (std::filesystem::is_directory(ultima, error)) return texto_de(ultima);
  for (std::size_t i = f.menu.men_dir.size(); i > 0; --i) {
    const std::filesystem::path una = ruta_de(f.historial.at(i));
    if (std::filesystem::is_regular_file(una, error)) return texto_de(una.parent_path());
  }
  return {};
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
  f.cmd_buscar.InitDir = carpeta_de_partida(f);
  abrir_elegido(f, f.plat.ShowOpen(f.cmd_buscar));
}

void abrir_soltado(frm_principal& f, const std::string& ruta) {
  if (rechazada_por_orden(f)) return;
  const orden_en_curso orden(f);
  abrir_elegido(f, ruta);
}

void cargar_proyecto(frm_principal& f, std::string_view extension) {
  f.cargando = true;
  f.ultimo_archivo = f.v.ruta_archivo;
  limpiar_buffer_salida(f.v);
  f.avance.mapa.nueva_imagen(f.v.buffer_salida);
  mostrar_ruta(f, f.v.ruta_archivo);
  f.v.carga = {.como = informe_carga::estado::desconocido};
  if (const formato* const cual = formato_de(extension)) cual->cargar(f);
  ++f.cargas;
  f.avance.mapa.nueva_imagen(f.v.buffer_salida);
  f.cargando = false;
}

std::size_t inicio_de_cola(std::size_t largo, std::size_t maximo, std::size_t visible) {
  if (largo < maximo) return 1;
  const std::size_t inicio = largo > visible ? largo - visible : visible - largo;
  return inicio == 0 ? 1 : inicio;
}

std::string ruta_abreviada(std::string_view ruta, std::size_t inicio, std::size_t cola) {
  return std::string(trozo(ruta, 1, 3)) + "..." + std::string(trozo(ruta, inicio, cola));
}

void mostrar_ruta(frm_principal& f, std::string_view ruta) {
  constexpr std::size_t maximo = 42, cola = 45, visible = 43;
  f.estado.panel(1).Text = ruta_abreviada(ruta, inicio_de_cola(longitud(ruta), maximo, visible), cola);
  f.estado.panel(1).ToolTipText = std::string(ruta);
}

}  // namespace morvane
