#pragma once

#include <deque>
#include <string>

#include "image/avance.h"
#include "image/informe_carga.h"

namespace morvane {

/// What has gone over the line so far.
struct trafico {
  /// Both ways together.
  std::uint64_t caracteres = 0;
  std::uint64_t respuestas = 0;
  /// Bits a second; 0 where that is not known.
  int velocidad = 0;
};

/// Why it goes slowly, for an operation that has exchanged all of `hubo` in `gastado`: empty as long as an exchange
/// takes no more than twice what its characters need, or too few have been made to tell. `m` tells whether its
/// exchanges wait for the line alone.
std::string lentitud(const labor& m, const trafico& hubo, instante gastado);

/// Tells the user how a command gets on: percentage, bytes per second and time left while it runs, how it went and how
/// long it took when it has ended; and what a load has brought. Texts change twice a second at most, the speed is that
/// of the last 20 seconds, and the time left counts down evenly as long as that is not far off.
class estimador {
 public:
  /// What stands on the bar, and the same in full.
  struct textos {
    std::string breve, extenso;
    /// Something is not as it was meant to be.
    bool aviso = false;
    bool operator==(const textos&) const = default;
  };

  /// A command begins: what was said of the last one goes.
  void empezar();
  /// Looks at the running operation. `ahora` is on the clock of `labor::inicio`; `linea` has only ever grown.
  void mirar(const labor& m, instante ahora, const trafico& linea = {});
  /// The command has ended, and `m` was its last operation.
  void acabar(const labor& m);
  /// The command has ended before its first operation, for this reason.
  void sin_operacion(const std::string& por_que);
  /// A file was loaded, or could not be.
  void cargada(const informe_carga& i);

  const textos& dicho() const { return dicho_; }

 private:
  struct muestra {
    instante cuando;
    std::int64_t hechos;
  };
  void empezar_operacion(const labor& m, instante ahora, const trafico& linea);
  void anadir_lentitud();
  double velocidad() const;
  std::int64_t segundos_que_faltan(const labor& m, double bytes_por_segundo);

  textos dicho_;
  std::deque<muestra> muestras_;
  unsigned vista_ = 0;
  instante proxima_{0};
  /// What had gone over the line when the operation was first seen.
  trafico antes_;
  instante vista_en_{0};
  /// Why the last operation goes, or went, slowly; empty if it does not.
  std::string lenta_;
  /// When the operation will have ended, as the user was told last.
  instante prometido_{0};
};

/// "0:42", "12:05", "1:02:03": `cuanto` in whole seconds.
std::string reloj_de(std::int64_t segundos);

/// "850 B/s", "4,8 kB/s", "125 kB/s"; a kB has 1000 bytes.
std::string velocidad_de(double bytes_por_segundo);

}  // namespace morvane
