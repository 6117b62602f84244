#include "files/ajustes.h"
#include "files/archivos.h"
#include "files/texto.h"
#include "platform/rutas.h"
#include "sesion.h"

namespace morvane::console {

namespace {

using job::desenlace;

bool es_numerado(std::string_view nombre) {
  constexpr std::size_t largo = 4;
  return nombre.size() == largo && mayusculas(nombre.substr(0, 3)) == "COM" && nombre[3] >= '0' && nombre[3] <= '9';
}

campos_ajustes ajustes_en(const std::filesystem::path& carpeta) {
  const archivos ficheros(carpeta);
  const std::string nombre = ficheros.ruta_aplicacion() + std::string(nombre_ajustes);
  if (ficheros.Dir(nombre).empty()) return ajustes_de({});
  const auto contenido = ficheros.leer(nombre, ajustes_maximo);
  if (!contenido) fracasar(desenlace::archivo, "No se puede leer " + texto_de(ficheros.anfitrion(nombre)) + ".");
  return ajustes_de(*contenido);
}

}  // namespace

std::filesystem::path carpeta_de(const llamada& ll) {
  const std::filesystem::path& dada = ll.a.directorio;
  const std::filesystem::path carpeta = dada.empty() ? ll.fuera.carpeta() : dada;
  std::error_code error;
  if (!std::filesystem::is_directory(carpeta, error)) {
    fracasar(desenlace::archivo, "La carpeta del programa no está: " + texto_de(carpeta) + ".");
  }
  return std::filesystem::absolute(carpeta, error);
}

puerto_elegido elegir_puerto(const llamada& ll) {
  const std::filesystem::path carpeta = carpeta_de(ll);
  const campos_ajustes s = ajustes_en(carpeta);
  const std::string velocidad = ll.a.velocidad ? std::to_string(*ll.a.velocidad) : s.velocidad;
  const auto como = leer_parametros(velocidad + s.paridad + s.bits_datos + s.bits_parada);
  if (!como) {
    fracasar(desenlace::archivo, "SETTINGS.TXT no sirve: «" + velocidad + "», «" + s.paridad + "», «" + s.bits_datos +
                                     "», «" + s.bits_parada + "» no son los parámetros de una línea.");
  }
  puerto_elegido p;
  p.adonde.directorio = carpeta;
  p.como = *como;
  p.nombre = ll.a.puerto.empty() ? mayusculas(s.puerto) : ll.a.puerto;
  if (es_numerado(p.nombre)) {
    p.adonde.numero = p.nombre.back() - '0';
  } else if (!ll.a.puerto.empty()) {
    p.adonde.ruta = ruta_de(p.nombre);
  } else {
    fracasar(desenlace::archivo, "SETTINGS.TXT no sirve: «" + s.puerto + "» no es un puerto.");
  }
  return p;
}

}  // namespace morvane::console
