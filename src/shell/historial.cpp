#include "shell/historial.h"

#include <cerrno>

#include "files/lista_archivos.h"
#include "files/texto.h"
#include "link/puerto.h"
#include "platform/rutas.h"
#include "shell/proyecto.h"

namespace morvane {

namespace {

constexpr std::size_t entradas = 10;
constexpr std::size_t ultima_casilla = lista_maxima;

std::string fichero_historial(const frm_principal& f) {
  return f.link.valores.ruta_aplicacion + std::string(nombre_lista);
}

void mostrar_separadores(frm_principal& f) {
  f.menu.separa_1.Visible = true;
  f.menu.separa_2.Visible = true;
}

std::string linea_de(std::string_view ruta) {
  return "\"" + std::string(ruta) + "\"\r\n";
}

void avisar(frm_principal& f, std::string_view que) {
  const std::string ruta = texto_de(f.link.ficheros.anfitrion(fichero_historial(f)));
  preguntar(f.link, {"Atención", std::string(que) + ruta, botones::Aceptar, icono::critico});
}

/// Makes list and menu those of a text of MENU.TXT that was just read. One without a path changes nothing.
void poner_lista(frm_principal& f, std::string contenido) {
  const std::vector<std::string> rutas = rutas_de_lista(contenido);
  f.historial_leido = std::move(contenido);
  if (rutas.empty()) return;
  for (std::size_t i = 1; i <= ultima_casilla; ++i) {
    if (i <= rutas.size()) {
      poner_entrada_menu(f, i, rutas[i - 1]);
    } else if (!f.historial.at(i).empty()) {
      f.historial.at(i).clear();
      if (i <= entradas) f.menu.men_dir.at(i - 1).Visible = false;
    }
  }
  mostrar_separadores(f);
}

error_archivo anadir_al_final(frm_principal& f, std::size_t casilla, std::string_view ruta) {
  poner_entrada_menu(f, casilla, ruta);
  mostrar_separadores(f);
  return f.link.ficheros.anadir_linea(fichero_historial(f), linea_de(ruta));
}

error_archivo desplazar_y_poner(frm_principal& f, std::string_view ruta) {
  for (std::size_t j = 1; j < ultima_casilla; ++j) f.historial.at(j) = f.historial.at(j + 1);
  f.historial.at(entradas) = ruta;
  mostrar_separadores(f);
  std::string contenido;
  for (std::size_t i = 1; i <= entradas; ++i) {
    const std::string cual = f.historial.at(i);
    contenido += linea_de(cual);
    poner_entrada_menu(f, i, cual);
  }
  const std::string nombre = fichero_historial(f);
  // What could not be read is not written over.
  if (!f.link.ficheros.Dir(nombre).empty() && !f.link.ficheros.leer(nombre)) return EIO;
  return f.link.ficheros.guardar(nombre, contenido);
}

error_archivo poner_en_la_lista(frm_principal& f, std::string_view ruta) {
  for (std::size_t i = 1; i <= entradas; ++i) {
    if (f.historial.at(i) == ruta) return 0;
    if (f.historial.at(i).empty()) return anadir_al_final(f, i, ruta);
  }
  return desplazar_y_poner(f, ruta);
}

}  // namespace

void leer_historial(frm_principal& f) {
  if (f.link.ficheros.Dir(fichero_historial(f)).empty()) return;
  auto contenido = f.link.ficheros.leer(fichero_historial(f));
  if (!contenido) return avisar(f, "No se ha podido leer la lista de archivos del fichero: ");
  poner_lista(f, std::move(*contenido));
}

void actualizar_historial(frm_principal& f, std::string_view ruta) {
  if (!cabe_en_lista(ruta)) return;
  const std::string nombre = fichero_historial(f);
  error_archivo error = 0;
  f.link.ficheros.por_turno(nombre, [&] {
    auto contenido = f.link.ficheros.leer(nombre);
    if (contenido && *contenido != f.historial_leido) poner_lista(f, std::move(*contenido));
    error = poner_en_la_lista(f, ruta);
    f.historial_leido = f.link.ficheros.leer(nombre).value_or("");
  });
  if (error != 0) avisar(f, "No se ha podido guardar la lista de archivos en el fichero: ");
}

void poner_entrada_menu(frm_principal& f, std::size_t indice, std::string_view ruta) {
  constexpr std::size_t maximo = 22, cola = 25, visible = 23;
  const std::size_t inicio = inicio_de_cola(longitud(ruta), maximo, visible);
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
