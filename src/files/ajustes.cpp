#include "files/ajustes.h"

#include <array>

#include "files/campos.h"
#include "files/texto.h"

namespace morvane {

namespace {

constexpr std::size_t maximo_campo = 255;

/// Takes a field that makes sense as a setting and could be written back.
void poner_campo(std::string& destino, const std::string& campo) {
  if (campo.size() <= maximo_campo && campo.find_first_of(std::string_view("\"\0", 2)) == std::string::npos) {
    destino = campo;
  }
}

}  // namespace

campos_ajustes ajustes_de(std::string_view contenido) {
  campos_ajustes a{.velocidad = "57600", .paridad = "n", .bits_datos = "8", .bits_parada = "1", .puerto = "COM1"};
  std::string_view resto = sin_marca_utf8(contenido);
  const std::vector<std::string> primera = campos_entrecomillados(en_utf8(siguiente_linea(resto)));
  const std::vector<std::string> segunda = campos_entrecomillados(en_utf8(siguiente_linea(resto)));
  const std::array destinos = {&a.velocidad, &a.paridad, &a.bits_datos, &a.bits_parada};
  for (std::size_t i = 0; i < destinos.size() && i < primera.size(); ++i) poner_campo(*destinos.at(i), primera[i]);
  if (!segunda.empty()) poner_campo(a.puerto, segunda.front());
  return a;
}

std::string texto_de_ajustes(const campos_ajustes& a) {
  return "\"" + a.velocidad + "\",\"" + a.paridad + "\",\"" + a.bits_datos + "\",\"" + a.bits_parada + "\"\r\n\"" +
         a.puerto + "\"\r\n";
}

}  // namespace morvane
