#pragma once

#include <chrono>
#include <fstream>

#include "bridge/chip.h"
#include "bridge/opciones.h"
#include "bridge/placa.h"
#include "descriptor.h"
#include "terminal.h"

namespace puente {

/// One run of the board on a terminal, from its first frame until it is asked to end or hangs up.
class sesion {
 public:
  /// `senales` is a descriptor that becomes readable when the run is to end. Throws with a Spanish text if the files of
  /// `o` cannot be used.
  sesion(const opciones& o, int senales);

  /// Serves `t` until the end. Changes of the flash are saved whenever they have settled.
  void atender(terminal& t);
  /// Saves the flash if that is asked for and it has changed since. Throws std::system_error.
  void guardar();

 private:
  instante ahora() const;
  instante proximo_plazo() const;
  bool esperar(terminal& t);
  static bool sigue_ligada();
  void mirar_cambios();

  const opciones& opciones_;
  int senales_;
  std::chrono::steady_clock::time_point inicio_ = std::chrono::steady_clock::now();
  chip chip_;
  placa placa_;
  std::ofstream traza_;
  std::uint64_t vistos_ = 0, guardados_ = 0;
  instante ultimo_cambio_{0};
  bool nueva_ = false;
};

}  // namespace puente
