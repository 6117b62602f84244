#include "files/ajustes.h"

#include "link/puerto.h"
#include "platform/rutas.h"

namespace morvane {

namespace {

void avisar_ajustes(enlace& e, std::string_view que) {
  const auto ruta = e.ficheros.anfitrion(e.valores.ruta_aplicacion + std::string(nombre_ajustes));
  preguntar(e, {"Atención", std::string(que) + texto_de(ruta), botones::Aceptar, icono::critico});
}

}  // namespace

std::optional<campos_ajustes> ajustes_guardados(const enlace& e) {
  const std::string nombre = e.valores.ruta_aplicacion + std::string(nombre_ajustes);
  if (e.ficheros.Dir(nombre).empty()) return std::nullopt;
  const auto contenido = e.ficheros.leer(nombre, ajustes_maximo);
  return contenido ? std::optional(ajustes_de(*contenido)) : std::nullopt;
}

bool faltan_ajustes(const enlace& e) {
  return e.ficheros.Dir(e.valores.ruta_aplicacion + std::string(nombre_ajustes)).empty();
}

void crear_ajustes(enlace& e) {
  if (!faltan_ajustes(e)) return leer_ajustes(e);
  const campos_ajustes& elegidos = e.valores;
  campos_ajustes nuevos = ajustes_de("");
  if (!elegidos.velocidad.empty()) nuevos.velocidad = elegidos.velocidad;
  if (!elegidos.puerto.empty()) nuevos.puerto = elegidos.puerto;
  const std::string nombre = e.valores.ruta_aplicacion + std::string(nombre_ajustes);
  if (e.ficheros.guardar(nombre, texto_de_ajustes(nuevos)) != 0) {
    return avisar_ajustes(e, "No se han podido guardar los ajustes en el fichero: ");
  }
  leer_ajustes(e);
}

void leer_ajustes(enlace& e) {
  ajustes& a = e.valores;
  const std::string nombre = a.ruta_aplicacion + std::string(nombre_ajustes);
  if (e.ficheros.Dir(nombre).empty()) return;
  const auto contenido = e.ficheros.leer(nombre, ajustes_maximo);
  if (!contenido) return avisar_ajustes(e, "No se han podido leer los ajustes del fichero: ");
  static_cast<campos_ajustes&>(a) = ajustes_de(*contenido);
  if (contenido->empty()) guardar_ajustes(e);
}

void guardar_ajustes(enlace& e) {
  const ajustes& a = e.valores;
  // Settings that were never read must not take the place of those that stand in the file. The user can choose speed
  // and port all the same; these three come from the file alone.
  if (a.paridad.empty() && a.bits_datos.empty() && a.bits_parada.empty()) return;
  const std::string nombre = a.ruta_aplicacion + std::string(nombre_ajustes);
  if (e.ficheros.Dir(nombre).empty()) return;
  if (e.ficheros.guardar(nombre, texto_de_ajustes(a)) != 0) {
    avisar_ajustes(e, "No se han podido guardar los ajustes en el fichero: ");
  }
}

}  // namespace morvane
