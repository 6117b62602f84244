#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "job/resultado.h"

/// The program of the command line: what it is called with, what it says, how it ends.
namespace morvane::console {

enum class orden : std::uint8_t {
  puertos,
  estado,
  plan,
  borrar,
  grabar,
  verificar,
  leer,
  identificar,
  convertir,
  reset,
  proteger,
  medir,
  comprobar,
};

/// What the program was called with, of one right form. Nothing of it has been looked for on the disk.
struct argumentos {
  orden que = orden::puertos;
  /// As many as the order takes.
  std::vector<std::filesystem::path> archivos;

  /// A name COM0 to COM9 in upper case, or the path of a device or link; empty for that of the settings.
  std::string puerto;
  /// 50 to 4,000,000 bits a second.
  std::optional<int> velocidad;
  std::filesystem::path directorio, traza, certificado;
  bool json = false, callada = false, todo = false;
  job::prueba prueba = job::prueba::sumas;
  /// The first and the last address of a reading, where they were given; not upside down, within the flash.
  std::optional<std::int32_t> desde, hasta;
  /// Where the bytes of a `.bin` begin; within the flash.
  std::optional<std::int32_t> en;
};

/// Nothing is to be done but to show this.
struct a_mostrar {
  enum class clase { ayuda, version };
  clase cual = clase::ayuda;
  std::string texto;
  bool json = false;
};

/// A wrong call.
struct mal_uso {
  /// The order, as far as it was understood.
  std::optional<orden> que;
  /// One Spanish sentence, and the right form of the order, or of the whole.
  std::string frase, forma;
  bool json = false;
};

/// Reads the words behind the program's name. Opens nothing, looks at nothing outside of them.
std::variant<argumentos, a_mostrar, mal_uso> leer_argumentos(std::span<const std::string> palabras);

/// The word of an order, and its form: "morvane-cli grabar [OPCIONES] ARCHIVO".
std::string_view nombre_de(orden que);
std::string forma_de(orden que);
std::optional<orden> orden_de(std::string_view nombre);

/// The help of all, and that of one order.
std::string texto_de_ayuda();
std::string texto_de_ayuda(orden que);

/// The address in a text of 1 to 8 hexadecimal digits, with 0x in front or not. Nothing for any other text.
std::optional<std::int64_t> leer_direccion(std::string_view texto);

}  // namespace morvane::console
