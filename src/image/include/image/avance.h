#pragma once

#include <cstdint>

#include "image/mapa_flash.h"
#include "platform/controles.h"
#include "platform/plataforma.h"

namespace morvane {

/// How far the running operation has come, for whoever tells the user how long it will still take.
struct labor {
  enum class clase : std::uint8_t { borrar, grabar, leer, verificar, examinar, reiniciar };
  /// `interrumpida` until an operation says otherwise; `fallida` if the chip has not done it.
  enum class final : std::uint8_t { interrumpida, hecha, detenida, distinta, fallida };
  clase cual = clase::borrar;
  final como = final::interrumpida;
  bool en_curso = false;
  /// Bytes to go over, and those done; a `total` of 0 where nobody can know it.
  std::int64_t total = 0, hechos = 0;
  /// What it has gone over; where `como` is `distinta`, what differs.
  tramo donde{};
  /// Words that were sent to be written and that the chip has not confirmed.
  int sin_confirmar = 0;
  /// When the operation began, on the clock that stands still while a box is open.
  instante inicio{0};
  /// Time that the operations of the last command have taken, the running one left out.
  instante gastado{0};
  /// Operations so far.
  unsigned cuantas = 0;
};

/// What a long operation shows of itself in the main window, and the user's wish to stop it.
struct avance {
  explicit avance(contador_cambios& cambios);

  /// Range 0 to 24.
  ProgressBar Progress;
  /// Time of day at the start and the end of the last long operation; never shown.
  TextBox time_ini, time_fin;
  /// The user wants the running operation stopped.
  bool cancelar = false;

  mapa_flash mapa;
  morvane::labor labor;
};

/// Adds `paso` to `acumulado` and moves the bar to `acumulado` x 25 / `total`, rounded to whole steps with halves to
/// the even neighbour; a value above 24 leaves the bar where it is, and so does a `total` of 0.
void avanzar_progreso(avance& a, std::int64_t total, std::int64_t paso, std::int64_t& acumulado);

/// Marks an operation as running for as long as it lives; its end leaves no head on the map. What the user reads
/// afterwards is outside of it, so that the reading is not counted.
class labor_en_curso {
 public:
  /// `total` in bytes, 0 if nobody can know it. Both references must outlive it.
  labor_en_curso(avance& a, const plataforma& plat, labor::clase cual, std::int64_t total);
  ~labor_en_curso();
  labor_en_curso(const labor_en_curso&) = delete;
  labor_en_curso& operator=(const labor_en_curso&) = delete;

 private:
  avance& a_;
  const plataforma& plat_;
};

}  // namespace morvane
