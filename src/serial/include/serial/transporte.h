#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace morvane {

/// How a serial line is set.
struct parametros_linea {
  /// Bits a second, 50 to 4,000,000.
  int velocidad = 57600;
  /// 'n' none, 'e' even, 'o' odd, 'm' mark, 's' space.
  char paridad = 'n';
  /// 5 to 8.
  int bits_datos = 8;
  /// Stop bits times two: 2, 3 (with five data bits) or 4.
  int medios_bits_parada = 2;
  bool operator==(const parametros_linea&) const = default;
};

/// Reads line parameters out of a text such as "57600n81": digits of the speed, the letter of the parity in either
/// case, the data bits, the stop bits ("1", "1.5" or "2"). Commas and blanks between the fields are passed over, so
/// "57600,N,8,1" says the same. Gives nothing if the text is anything else or asks for what no line can do.
std::optional<parametros_linea> leer_parametros(std::string_view texto);

/// The road to the far end of a serial line. One line is open at a time. No call waits, but for `cerrar`.
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

  /// Told why each `existe` and `abrir` that gives False did so, at once, if set: the port, what it leads to, the
  /// cause, and what the user can do about it, in one Spanish line without a line end.
  std::function<void(const std::string& motivo)> al_fallar;
};

}  // namespace morvane
