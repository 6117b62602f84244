#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/anfitrion.h"
#include "platform/caja.h"
#include "platform/controles.h"
#include "platform/reloj.h"

namespace morvane {

/// Something that has to be looked after once in every pass of the event pump, such as a serial control.
class fuente_eventos {
 public:
  virtual ~fuente_eventos() = default;
  /// One bounded piece of work. It never waits.
  virtual void atender() = 0;
};

/// What the system asks of the machine and the desktop that it runs on. All calls come from one thread.
class plataforma {
 public:
  plataforma() = default;
  virtual ~plataforma() = default;
  plataforma(const plataforma&) = delete;
  plataforma& operator=(const plataforma&) = delete;

  /// One pass of the event pump: the pending events of the desktop, then what the registered sources have, then the
  /// timers that are due. It returns when nothing is pending and never sleeps. Handlers may start further passes.
  void DoEvents();

  /// Shows a message box and returns when it is closed. No serial event and no tick is delivered meanwhile; all
  /// running clocks start anew when it closes. `explicacion` stands under the text of the message: what lies behind it,
  /// line by line, or nothing.
  respuesta_caja MsgBox(const caja& mensaje, const std::string& explicacion = {});
  bool caja_abierta() const { return cajas_abiertas_ > 0; }

  /// The monotonic clock that timers and waits count on.
  virtual instante ahora() const = 0;
  /// The same clock without the time in which message boxes were open: it stands still while one is.
  instante ahora_sin_cajas() const;

  /// The time of day as the desktop writes it, "14:05:09".
  virtual std::string hora() const = 0;

  /// Shows the open dialog. Returns the path of the file in the host's own form, or an empty text if none was chosen.
  virtual std::string ShowOpen(const CommonDialog& dialogo) = 0;

  /// The host's registry and programs.
  virtual anfitrion& maquina() = 0;

  /// Ends the program at once, without closing or saving anything.
  [[noreturn]] virtual void terminar() = 0;

  /// Registers a source for as long as it lives; sources are served in the order of registration.
  void registrar(fuente_eventos& fuente);
  void retirar(fuente_eventos& fuente);

 protected:
  /// Delivers what the desktop has pending and returns.
  virtual void eventos() = 0;
  virtual respuesta_caja mostrar(const caja& mensaje, const std::string& explicacion) = 0;
  /// When the next of the running clocks will be due, if any runs that is not due yet.
  std::optional<instante> proximo_plazo() const;

 private:
  friend class reloj;
  void tocar_relojes();
  void reiniciar_relojes();

  std::vector<fuente_eventos*> fuentes_;
  std::vector<reloj*> relojes_;
  int cajas_abiertas_ = 0;
  /// When the open box came up, and how long those before it were open.
  instante caja_desde_{0}, en_cajas_{0};
};

}  // namespace morvane
