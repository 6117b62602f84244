#pragma once

#include <string>

namespace morvane {

/// The button that ended a message box. Boxes that are closed in any other way give `vbNinguna`.
enum respuesta_caja : int { vbNinguna = 0, vbOK = 1, vbCancel = 2, vbYes = 6, vbNo = 7 };

enum class botones { Aceptar, AceptarCancelar, SiNo, SiNoCancelar };

enum class icono { ninguno, critico, exclamacion, informacion };

/// A message to the user. An empty title stands for the title of the application.
struct caja {
  std::string titulo;
  std::string texto;
  botones teclas = botones::Aceptar;
  icono dibujo = icono::ninguno;
  bool operator==(const caja&) const = default;
};

}  // namespace morvane
