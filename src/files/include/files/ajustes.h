#pragma once

#include <string>
#include <string_view>

namespace morvane {

/// The file of the settings, in the application's directory, and what is read of it at most, in bytes.
constexpr std::string_view nombre_ajustes = "SETTINGS.TXT";
constexpr std::size_t ajustes_maximo = std::size_t{64} * 1024;

/// The settings as texts, which may be anything.
struct campos_ajustes {
  std::string velocidad;
  std::string paridad;
  std::string bits_datos;
  std::string bits_parada;
  std::string puerto;
};

/// The settings in the text of such a file. What it does not have, and what could not be written back, is as in a new
/// one: 57600, n, 8, 1, COM1.
campos_ajustes ajustes_de(std::string_view contenido);

/// The text of such a file, byte for byte.
std::string texto_de_ajustes(const campos_ajustes& a);

}  // namespace morvane
