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
  const std::string contenido = "\"" + a.velocidad + "\",\"" + a.paridad + "\",\"" + a.bits_datos + "\",\"" +
                                a.bits_parada + "\"\r\n\"" + a.puerto + "\"\r\n";
  if (e.ficheros.guardar(nombre, contenido) != 0) {
    avisar_ajustes(e, "No se han podido guardar los ajustes en el fichero: ");
  }
}

}  // namespace morvane
