#include "shell/historial.h"

#include "link/puerto.h"
#include "platform/campos.h"
#include "platform/texto.h"
#include "shell/proyecto.h"

namespace morvane {

namespace {

constexpr std::size_t entradas = 10;
constexpr std::size_t ultima_casilla = 12;
constexpr const char* nombre_historial = "MENU.TXT";

std::string fichero_historial(const frm_principal& f) {
  return f.link.valores.ruta_aplicacion + nombre_historial;
}

void mostrar_separadores(frm_principal& f) {
  f.menu.separa_1.Visible = true;
  f.menu.separa_2.Visible = true;
}

std::string linea_de(std::string_view ruta) {
  return "\"" + std::string(ruta) + "\"\r\n";
}

void avisar(frm_principal& f, std::string_view que) {
  const std::string ruta = f.link.ficheros.anfitrion(fichero_historial(f)).string();
  preguntar(f.link, {"Atención", std::string(que) + ruta, botones::Aceptar, icono::critico});
}

void avisar_si_falla(frm_principal& f, error_archivo error) {
  if (error != 0) avisar(f, "No se ha podido guardar la lista de archivos en el fichero: ");
}

void anadir_al_final(frm_principal& f, std::size_t casilla, std::string_view ruta) {
  poner_entrada_menu(f, casilla, ruta);
  mostrar_separadores(f);
  avisar_si_falla(f, f.link.ficheros.anadir_linea(fichero_historial(f), linea_de(ruta)));
}

void desplazar_y_poner(frm_principal& f, std::string_view ruta) {
  for (std::size_t j = 1; j < ultima_casilla; ++j) f.historial.at(j) = f.historial.at(j + 1);
  f.historial.at(entradas) = ruta;
  mostrar_separadores(f);
  std::string contenido;
  for (std::size_t i = 1; i <= entradas; ++i) {
    const std::string cual = f.historial.at(i);
    contenido += linea_de(cual);
    poner_entrada_menu(f, i, cual);
  }
  avisar_si_falla(f, f.link.ficheros.guardar(fichero_historial(f), contenido));
}

}  // namespace

void leer_historial(frm_principal& f) {
  if (f.link.ficheros.Dir(fichero_historial(f)).empty()) return;
  const auto contenido = f.link.ficheros.leer(fichero_historial(f));
  if (!contenido) return avisar(f, "No se ha podido leer la lista de archivos del fichero: ");
  std::size_t numero = 0;
  for (std::string_view resto = sin_marca_utf8(*contenido); !resto.empty();) {
    for (const std::string& ruta : campos_entrecomillados(siguiente_linea(resto))) {
      if (ruta.empty() || numero == ultima_casilla) continue;
      poner_entrada_menu(f, ++numero, ruta);
    }
  }
  if (numero > 0) mostrar_separadores(f);
}

void actualizar_historial(frm_principal& f, std::string_view ruta) {
  if (ruta.find_first_of("\"\r\n") != std::string_view::npos) return;
  for (std::size_t i = 1; i <= entradas; ++i) {
    if (f.historial.at(i) == ruta) return;
    if (f.historial.at(i).empty()) return anadir_al_final(f, i, ruta);
  }
  desplazar_y_poner(f, ruta);
}

void poner_entrada_menu(frm_principal& f, std::size_t indice, std::string_view ruta) {
  constexpr std::size_t corte = 22, cola = 25, visible = 23;
  const std::size_t inicio = inicio_de_cola(longitud(ruta), corte, visible);
  f.historial.at(indice) = ruta;
  if (indice < 1 || indice > entradas) return;
  Menu& entrada = f.menu.men_dir.at(indice - 1);
  entrada.Caption = "&" + std::to_string(indice) + " " + ruta_abreviada(ruta, inicio, cola);
  entrada.Visible = true;
}

void men_dir_Click(frm_principal& f, std::size_t numero) {
  if (rechazada_por_orden(f)) return;
  const orden_en_curso orden(f);
  f.v.ruta_archivo = f.historial.at(numero);
  cargar_proyecto(f, extension_de(f.v.ruta_archivo));
}

}  // namespace morvane
