#pragma once

#include <cstdint>
#include <string>

#include "link/enlace.h"
#include "shell/estimador.h"

namespace morvane {

struct frm_principal;

/// How it stands with the board at a port, as it was seen last.
struct contacto {
  enum class estado : std::uint8_t { ninguno, responde, calla, sin_puerto };
  estado cual = estado::ninguno;
  /// Port and time of day of that.
  std::string puerto, hora;
  /// The counts of the line when a command began, and replies that have been looked at.
  cuentas_de_linea al_empezar{};
  std::uint64_t vistas = 0;
  /// Commands so far that ended without a board, because it was silent or the port could not be opened.
  unsigned fallidos = 0;
};

/// A command begins, or has ended.
void empezar_contacto(frm_principal& f);
void acabar_contacto(frm_principal& f);

/// Notes the time if a reply has come since the last look. Cheap when none has.
void mirar_contacto(frm_principal& f);

/// What has gone over the line since the program began, and the speed of the settings.
trafico trafico_de(const enlace& e);

/// What the main window says of port and board, in two lines.
struct letrero {
  std::string puerto, placa;
  /// The last command has found no board.
  bool aviso = false;
  bool operator==(const letrero&) const = default;
};
/// `rotulo`: the port of the settings and what is at it, in a few words.
letrero letrero_de(const frm_principal& f, const std::string& rotulo);

/// Why the last command ended without a board, in a few words; empty where it found one.
std::string sin_contacto(const frm_principal& f);

}  // namespace morvane
