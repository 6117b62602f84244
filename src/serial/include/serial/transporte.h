#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string_view>

#include "serial/causa_puerto.h"
#include "serial/parametros_linea.h"

namespace morvane {

/// The road to the far end of a serial line. One line is open at a time. No call waits, but for `cerrar`,
/// and `abrir` as long as the host takes over it.
class transporte {
 public:
  virtual ~transporte() = default;

  /// True if the port `numero` (0 to 9) leads to a device. Opens nothing.
  virtual bool existe(int numero) = 0;

  /// Opens the port `numero` with the given parameters; a line that is open is closed first. After True the line is
  /// this program's alone, what had come in before is dropped, and `perdido` is False. After False nothing is open.
  virtual bool abrir(int numero, const parametros_linea& linea) = 0;

  /// Queues all of `datos` for sending. What the line cannot take yet goes out during later calls of `leer`. Nothing
  /// happens if the line is closed or lost.
  virtual void escribir(std::string_view datos) = 0;

  /// Stores what has come in at the front of `destino`, as much as there is room for, and returns how much that was; 0
  /// if the line is closed or lost.
  virtual std::size_t leer(std::span<char> destino) = 0;

  /// True from the moment the device was found gone until the line is closed or opened again.
  virtual bool perdido() const = 0;

  /// Gives unsent output up to 100 ms to leave, drops what is left of it, and gives the line back.
  virtual void cerrar() = 0;

  /// Drops unsent output at once, so that the end of the program cannot be held up by it.
  virtual void descartar_salida() = 0;

  /// Told why each `existe` and `abrir` that gives False did so, at once, if set.
  std::function<void(const causa_puerto& causa)> al_fallar;
};

}  // namespace morvane
