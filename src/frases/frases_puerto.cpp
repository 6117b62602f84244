#include <system_error>

#include "frases/frases.h"
#include "platform/rutas.h"

namespace morvane {

namespace {

using clase = causa_puerto::clase;

std::string alguien(const std::string& quien) {
  return quien.empty() ? "otro programa" : quien;
}

std::string mensaje_de(int error) {
  return std::generic_category().message(error);
}

std::string parametros_rechazados(const parametros_linea& linea) {
  return "el dispositivo no admite estos parámetros: " + std::to_string(linea.velocidad) + " baudios, paridad " +
         linea.paridad + ", " + std::to_string(linea.bits_datos) + " bits de datos, " +
         std::to_string(linea.medios_bits_parada / 2) + (linea.medios_bits_parada % 2 != 0 ? ",5" : "") + " de parada";
}

/// What is said of a cause, and whether the device stands in front of it.
struct dicho {
  std::string texto;
  bool de_un_dispositivo = true;
};

dicho decir(const causa_puerto& c) {
  const std::string ruta = texto_de(c.ruta), enlace = texto_de(c.enlace);
  switch (c.cual) {
    case clase::carpeta_movida:
      return {"la carpeta del programa ya no está en " + ruta + "; cierre el programa y vuelva a arrancarlo", false};
    case clase::sin_enlace:
      return {"no existe el enlace " + enlace, false};
    case clase::sin_nada:
      return {enlace.empty() ? "no existe " + ruta : "no existen ni " + ruta + " ni el enlace " + enlace, false};
    case clase::enlace_roto:
      return {"el enlace " + enlace + " lleva a " + ruta + ", que no existe", false};
    case clase::enlace_pasado:
      return {"el enlace " + enlace + " es de una placa que ya no está: " + ruta + " se ha abierto después y es de " +
                  alguien(c.quien) + "; arranque la placa otra vez, o cambie o quite el enlace",
              false};
    case clase::camino_cerrado:
      return {"sin permiso para llegar a lo que hay tras " + ruta, false};
    case clase::no_existe:
      return {"no existe en este equipo", false};
    case clase::no_es_dispositivo:
      return {ruta + " no es un dispositivo serie", false};
    case clase::enlace_fijo:
      return {"no se puede cambiar el enlace " + enlace + ": " + mensaje_de(c.error), false};
    case clase::no_es_enlace:
      return {enlace + " existe y no es un enlace", false};
    case clase::numero_fijo:
      return {"el número de un puerto se cambia en el Administrador de dispositivos de Windows", false};
    case clase::no_es_serie:
      return {"no es un dispositivo serie"};
    case clase::sin_aparato:
      return {"no hay ningún aparato detrás de este dispositivo"};
    case clase::ocupado:
      return {"ocupado por " + alguien(c.quien)};
    case clase::falta_grupo:
      return {"sin permiso: ejecute «sudo usermod -aG " + c.quien + " $USER» y vuelva a iniciar la sesión"};
    case clase::solo_de_usuario:
      return {"sin permiso: es solo del usuario " + c.quien};
    case clase::sin_permiso:
      return {"sin permiso"};
    case clase::parametros:
      return {parametros_rechazados(c.linea)};
    case clase::sistema:
      return {mensaje_de(c.error)};
    case clase::windows:
      return {"no se puede abrir: error " + std::to_string(c.error) + " de Windows"};
  }
  return {};
}

/// Names of files and programs may hold anything, and this is one line.
std::string en_un_renglon(std::string texto) {
  for (char& c : texto) c = static_cast<unsigned char>(c) < ' ' || c == '\x7F' ? '?' : c;
  return texto;
}

/// The adapter and its driver, as far as they are known.
std::string que_hay_en(const descripcion_puerto& puerto) {
  if (puerto.placa_simulada) return "";
  std::string nombre = en_un_renglon(puerto.nombre);
  if (puerto.conductor.empty()) return nombre;
  return nombre.empty() ? "Conductor " + puerto.conductor : nombre + ", conductor " + puerto.conductor;
}

}  // namespace

std::string frase_sin_puerto(const causa_puerto& causa) {
  const auto [texto, de_un_dispositivo] = decir(causa);
  return en_un_renglon((de_un_dispositivo && !causa.ruta.empty() ? texto_de(causa.ruta) + ": " : "") + texto);
}

std::string frase(const causa_puerto& causa) {
  if (causa.puerto == causa_puerto::sin_numero) return frase_sin_puerto(causa);
  return "COM" + std::to_string(causa.puerto) + ": " + frase_sin_puerto(causa);
}

std::string frase_breve(const descripcion_puerto& puerto) {
  if (puerto.falta) return frase(*puerto.falta);
  std::string texto = "COM" + std::to_string(puerto.numero) + ": " + texto_de(puerto.dispositivo);
  if (puerto.placa_simulada) texto += ", placa simulada";
  if (!puerto.placa_simulada && !puerto.nombre.empty()) texto += ", " + puerto.nombre;
  return en_un_renglon(texto);
}

std::string rotulo(const descripcion_puerto& puerto) {
  const std::string principio = "COM" + std::to_string(puerto.numero) + " · ";
  if (puerto.falta) return principio + "nada conectado";
  if (puerto.placa_simulada) return principio + "placa simulada";
  return principio + en_un_renglon(puerto.nombre.empty() ? texto_de(puerto.dispositivo) : puerto.nombre);
}

std::string frase(const descripcion_puerto& puerto) {
  if (puerto.falta) return frase(*puerto.falta);
  std::string texto = "COM" + std::to_string(puerto.numero) + ": " + en_un_renglon(texto_de(puerto.dispositivo));
  if (puerto.placa_simulada) texto += "\nPlaca simulada";
  const std::string que_es = que_hay_en(puerto);
  if (!que_es.empty()) texto += "\n" + que_es;
  if (puerto.cerrado) return texto + "\nNo se puede abrir: " + en_un_renglon(decir(*puerto.cerrado).texto);
  if (puerto.quien) texto += puerto.quien->empty() ? "\nLibre" : "\nLo tiene abierto " + en_un_renglon(*puerto.quien);
  return texto;
}

}  // namespace morvane
