#include "motivos.h"

namespace morvane {

std::string motivo_de(int numero, const std::string& porque) {
  std::string motivo = "COM" + std::to_string(numero) + ": " + porque;
  // Names of files and programs may hold anything, and this is one line.
  for (char& c : motivo) c = static_cast<unsigned char>(c) < ' ' || c == '\x7F' ? '?' : c;
  return motivo;
}

std::string parametros_rechazados(const parametros_linea& linea) {
  return "el dispositivo no admite estos parámetros: " + std::to_string(linea.velocidad) + " baudios, paridad " +
         linea.paridad + ", " + std::to_string(linea.bits_datos) + " bits de datos, " +
         std::to_string(linea.medios_bits_parada / 2) + (linea.medios_bits_parada % 2 != 0 ? ",5" : "") + " de parada";
}

}  // namespace morvane
