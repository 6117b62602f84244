#pragma once

#include <chrono>
#include <fstream>
#include <optional>
#include <string>

#include "bridge/adaptador.h"
#include "bridge/chip.h"
#include "bridge/cronica.h"
#include "bridge/opciones.h"
#include "bridge/placa.h"
#include "bridge/reproduccion.h"
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
  /// Empty, or one Spanish line about a trace that was not played to its end.
  std::string queja() const;

 private:
  void abrir_traza();
  void leer_reproduccion();
  instante ahora() const;
  instante proximo_plazo() const;
  bool esperar(terminal& t);
  static bool sigue_ligada();
  void mirar_cambios();
  void mirar_reproduccion();

  const opciones& opciones_;
  int senales_;
  std::chrono::steady_clock::time_point inicio_ = std::chrono::steady_clock::now();
  chip chip_;
  placa placa_;
  std::optional<reproduccion> repite_;
  adaptador cable_;
  extremo* lejos_ = &cable_;
  std::ofstream traza_;
  std::optional<cronica> cronica_;
  bool dicho_ = false;
  std::uint64_t vistos_ = 0, guardados_ = 0;
  instante ultimo_cambio_{0};
  bool nueva_ = false;
};

}  // namespace puente
