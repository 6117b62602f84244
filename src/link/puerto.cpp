#include "link/puerto.h"

#include "files/texto.h"

namespace morvane {

namespace {

bool negar(enlace& e, std::string_view titulo, std::string_view texto, asunto que) {
  if (que != asunto::puerto_propio) {
    ++e.cuentas.negadas;
    e.cuentas.puerto = e.valores.puerto;
  }
  preguntar(e, {std::string(titulo), std::string(texto), botones::Aceptar, icono::exclamacion}, {.que = que});
  return false;
}

bool es_puerto(const std::string& puerto) {
  return longitud(puerto) == 4 && mayusculas(puerto.substr(0, 3)) == "COM" && puerto[3] >= '0' && puerto[3] <= '9';
}

}  // namespace

bool abrir_puerto(enlace& e) {
  const ajustes& a = e.valores;
  MSComm& serial = e.control_serie;
  if (!es_puerto(a.puerto)) {
    return negar(e, "Atención", "Debe escribir un puerto válido, o seleccionar uno de la lista",
                 asunto::puerto_sin_numero);
  }
  if (serial.PortOpen()) {
    return negar(e, "Atención", "El puerto ya está siendo utilizado por otra aplicación", asunto::puerto_propio);
  }
  if (!serial.CommPort(a.puerto[3] - '0')) {
    return negar(e, "Atención",
                 "Es probable que el puerto no exista, verifique en su Sistema Operativo los puertos existentes",
                 asunto::puerto_cerrado);
  }
  if (!serial.Settings(a.velocidad + a.paridad + a.bits_datos + a.bits_parada)) {
    return negar(e, "Atención ocurrió un error",
                 "Verifique los valores de: Velocidad de transmisión, Bit de paridad, Bits de datos y bit de parada",
                 asunto::parametros);
  }
  if (!serial.PortOpen(true)) {
    return negar(e, "Atención", "El puerto ya ha sido utilizado por otra aplicación", asunto::puerto_cerrado);
  }
  e.operacion = {};
  ++e.cuentas.aperturas;
  e.cuentas.puerto = a.puerto;
  return true;
}

void cerrar_puerto(enlace& e) {
  e.spera_resp.Enabled(false);
  if (e.control_serie.PortOpen()) e.control_serie.PortOpen(false);
}

std::optional<fichero> abrir_fichero(enlace& e, std::string_view ruta, std::string_view nombre, modo_fichero modo) {
  const std::string completo = std::string(ruta) + std::string(nombre);
  const bool existe = mayusculas(e.ficheros.Dir(completo)) == mayusculas(nombre);
  if (!existe && modo != modo_fichero::escribir) return std::nullopt;
  fichero abierto;
  const error_archivo error = e.ficheros.abrir(completo, static_cast<archivos::modo>(modo), abierto);
  if (error == 0) return abierto;
  preguntar(e, {"Atención",
                "Se ha producido el siguiente error: " + std::to_string(error) +
                    ", al intentar abrir el fichero: " + std::string(ruta) + "\\" + std::string(nombre),
                botones::Aceptar, icono::critico});
  return std::nullopt;
}

}  // namespace morvane
