#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "job/entorno.h"
#include "serial/transporte.h"

namespace morvane::console {

/// Where text goes.
class salida {
 public:
  virtual ~salida() = default;
  /// Writes all of `texto`, waiting where it must, but not against a stop of level 2. After a failure nothing more is
  /// written.
  virtual void escribir(std::string_view texto) = 0;
  /// A line could be taken at once.
  virtual bool lista() { return true; }
  /// Something could not be written.
  virtual bool fallida() const = 0;

  bool terminal = false, color = false;
  /// Characters in a line of the terminal.
  int ancho = 80;
};

/// What a port order opens: a port of the program's folder by its number, or the device behind a path.
struct destino_puerto {
  std::filesystem::path directorio;
  /// 0 to 9, or `causa_puerto::sin_numero`.
  int numero = causa_puerto::sin_numero;
  std::filesystem::path ruta;
};

/// All that the program asks of the world around it.
class exterior {
 public:
  virtual ~exterior() = default;

  virtual salida& normal() = 0;
  virtual salida& errores() = 0;
  /// The clock, and the wish to stop.
  virtual job::entorno& mundo() = 0;
  /// The number of the first signal that asked for a stop; 0 if there was none.
  virtual int senal() const = 0;
  /// The folder that the executable lies in.
  virtual std::filesystem::path carpeta() const = 0;

  /// Opens a line, of which there is one at a time. Gives why it could not be; then none is open.
  virtual std::optional<causa_puerto> abrir(const destino_puerto& adonde, const parametros_linea& como) = 0;
  /// The open line, and the device at its end, links resolved.
  virtual transporte& linea() = 0;
  virtual std::filesystem::path dispositivo() const = 0;
};

}  // namespace morvane::console
