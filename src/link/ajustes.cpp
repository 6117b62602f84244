#include <array>

#include "link/puerto.h"
#include "platform/campos.h"

namespace morvane {

namespace {

constexpr std::string_view nombre_ajustes = "SETTINGS.TXT";

void poner_valores_iniciales(ajustes& a) {
  a.velocidad = "57600";
  a.paridad = "n";
  a.bits_datos = "8";
  a.bits_parada = "1";
  a.puerto = "COM1";
}

void avisar_ajustes(enlace& e, std::string_view que) {
  const auto ruta = e.ficheros.anfitrion(e.valores.ruta_aplicacion + std::string(nombre_ajustes));
  preguntar(e, {"Atención", std::string(que) + ruta.string(), botones::Aceptar, icono::critico});
}

}  // namespace

void leer_ajustes(enlace& e) {
  ajustes& a = e.valores;
  const std::string nombre = a.ruta_aplicacion + std::string(nombre_ajustes);
  if (e.ficheros.Dir(nombre).empty()) return;
  const auto contenido = e.ficheros.leer(nombre);
  if (!contenido) return avisar_ajustes(e, "No se han podido leer los ajustes del fichero: ");
  poner_valores_iniciales(a);
  if (contenido->empty()) return guardar_ajustes(e);

  std::string_view resto = sin_marca_utf8(*contenido);
  const std::vector<std::string> primera = campos_entrecomillados(siguiente_linea(resto));
  const std::vector<std::string> segunda = campos_entrecomillados(siguiente_linea(resto));
  const std::array destinos = {&a.velocidad, &a.paridad, &a.bits_datos, &a.bits_parada};
  for (std::size_t i = 0; i < destinos.size() && i < primera.size(); ++i) *destinos.at(i) = primera[i];
  if (!segunda.empty()) a.puerto = segunda.front();
}

void guardar_ajustes(enlace& e) {
  const ajustes& a = e.valores;
  // Settings that were never read must not take the place of those that stand in the file.
  if (a.velocidad.empty()) return;
  const std::string nombre = a.ruta_aplicacion + std::string(nombre_ajustes);
  if (e.ficheros.Dir(nombre).empty()) return;
  const std::string contenido = "\"" + a.velocidad + "\",\"" + a.paridad + "\",\"" + a.bits_datos + "\",\"" +
                                a.bits_parada + "\"\r\n\"" + a.puerto + "\"\r\n";
  if (e.ficheros.guardar(nombre, contenido) != 0) {
    avisar_ajustes(e, "No se han podido guardar los ajustes en el fichero: ");
  }
}

}  // namespace morvane
