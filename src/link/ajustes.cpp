#include <array>

#include "files/campos.h"
#include "files/texto.h"
#include "link/puerto.h"
#include "platform/rutas.h"

namespace morvane {

namespace {

constexpr std::string_view nombre_ajustes = "SETTINGS.TXT";
constexpr std::size_t maximo_fichero = std::size_t{64} * 1024, maximo_campo = 255;

void poner_valores_iniciales(ajustes& a) {
  a.velocidad = "57600";
  a.paridad = "n";
  a.bits_datos = "8";
  a.bits_parada = "1";
  a.puerto = "COM1";
}

/// Takes a field that makes sense as a setting and could be written back.
void poner_campo(std::string& destino, const std::string& campo) {
  if (campo.size() <= maximo_campo && campo.find_first_of(std::string_view("\"\0", 2)) == std::string::npos) {
    destino = campo;
  }
}

void avisar_ajustes(enlace& e, std::string_view que) {
  const auto ruta = e.ficheros.anfitrion(e.valores.ruta_aplicacion + std::string(nombre_ajustes));
  preguntar(e, {"Atención", std::string(que) + texto_de(ruta), botones::Aceptar, icono::critico});
}

}  // namespace

void leer_ajustes(enlace& e) {
  ajustes& a = e.valores;
  const std::string nombre = a.ruta_aplicacion + std::string(nombre_ajustes);
  if (e.ficheros.Dir(nombre).empty()) return;
  const auto contenido = e.ficheros.leer(nombre, maximo_fichero);
  if (!contenido) return avisar_ajustes(e, "No se han podido leer los ajustes del fichero: ");
  poner_valores_iniciales(a);
  if (contenido->empty()) return guardar_ajustes(e);

  std::string_view resto = sin_marca_utf8(*contenido);
  const std::vector<std::string> primera = campos_entrecomillados(en_utf8(siguiente_linea(resto)));
  const std::vector<std::string> segunda = campos_entrecomillados(en_utf8(siguiente_linea(resto)));
  const std::array destinos = {&a.velocidad, &a.paridad, &a.bits_datos, &a.bits_parada};
  for (std::size_t i = 0; i < destinos.size() && i < primera.size(); ++i) poner_campo(*destinos.at(i), primera[i]);
  if (!segunda.empty()) poner_campo(a.puerto, segunda.front());
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
