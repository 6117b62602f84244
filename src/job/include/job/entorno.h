#pragma once

#include <chrono>
#include <cstdint>
#include <string_view>

#include "job/desenlace.h"

namespace morvane::job {

/// A point on the clock of an `entorno`.
using tiempo = std::chrono::microseconds;

/// What a job asks of the world beside the line: the time, and whether it shall end.
class entorno {
 public:
  virtual ~entorno() = default;

  /// A clock that never goes back.
  virtual tiempo ahora() = 0;
  /// Returns when something may have come in on the line, and after `hasta_cuanto` at the latest. May return at once.
  virtual void esperar(tiempo hasta_cuanto) = 0;
  /// Lets `cuanto` pass, unless a stop of level 2 is wanted.
  virtual void pausa(tiempo cuanto) = 0;
  /// 0 go on; 1 finish the word in hand and close the chip; 2 end the waits too. Never goes back.
  virtual int parada() { return 0; }
};

enum class fase { abrir, mirar, borrar, grabar, probar, localizar, leer, proteger, reiniciar, medir, cerrar };

enum class suceso {
  /// A reading command goes out once more.
  repetida,
  /// A RESET signal came.
  reset,
  /// A frame was refused; `codigo` says how.
  rechazo,
  /// No answer within its time; the wait goes on.
  sin_respuesta,
  /// The line was in doubt; the chip has been closed and opened again.
  reabierta,
  /// A word in doubt was read: it stands as it should, or goes out again.
  palabra_bien,
  palabra_otra_vez,
  /// A board does not take a shape of command that is not fixed; it is not asked again.
  forma_abandonada,
  /// The erase goes out again.
  borrado_otra_vez,
};

/// Told what a job does while it does it. May not touch the line.
class observador {
 public:
  virtual ~observador() = default;
  /// A new stretch of work, over `total` bytes; 0 where there is nothing to count.
  virtual void empieza(fase /*cual*/, std::int64_t /*total*/) {}
  /// `hechos` bytes of it are done.
  virtual void avanza(std::int64_t /*hechos*/) {}
  /// `direccion` is -1 where there is none, `codigo` 0.
  virtual void ocurre(suceso /*que*/, std::string_view /*comando*/, std::int32_t /*direccion*/, char /*codigo*/) {}
  /// `crudo` went out ('>') or came in ('<'), a frame with the noise around it; `cuando` is when it was written or its
  /// last character was read. Or the device has gone ('!', "cuelga").
  virtual void traza(char /*direccion*/, std::string_view /*crudo*/, tiempo /*cuando*/) {}
};

}  // namespace morvane::job
