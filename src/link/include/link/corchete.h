#pragma once

#include "link/esperas.h"

namespace morvane {

/// What a command of the user stands between: the port is opened and closed, and within that, by `abrir_chip` and
/// `cerrar_chip`, the chip. While it lives the port is this command's; its end closes the port on every way out.
class corchete {
 public:
  /// Opens the port (see `abrir_puerto`).
  explicit corchete(enlace& e);
  ~corchete();
  corchete(const corchete&) = delete;
  corchete& operator=(const corchete&) = delete;

  /// False if the port could not be opened; the user has seen why.
  bool abierto() const { return abierto_; }

  /// The end of the command: closes the port, and tells the user if the operation was broken off or a wait was given
  /// up, so that it has to be repeated. `tiempo_agotado` is then down.
  void terminar();

 private:
  enlace& e_;
  const bool abierto_;
};

/// The wait that a command has behind its "A" and its "D".
using espera = void (*)(enlace&);

/// Sends "A" and waits.
void abrir_chip(enlace& e, espera esperar);

/// Sends "D" and waits. The work is done by then, so a closing that fails does not undo what can be said of it: whether
/// the operation counts as broken off or left without a reply stays as it was before. What it has shown of the device,
/// `operacion.perdida`, stays.
void cerrar_chip(enlace& e, espera esperar);

}  // namespace morvane
