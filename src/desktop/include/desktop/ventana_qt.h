#pragma once

#include <QMainWindow>
#include <functional>
#include <string>
#include <vector>

#include "platform/controles.h"

namespace morvane {

/// Shows one window of the shell. Widgets are made once, from the description; afterwards `sincronizar` takes changed
/// properties over whenever the window's counter has moved, and user events call the handlers of the controls. Each
/// widget carries the name of its control as its object name; the n-th tool button and panel carry the name of their
/// bar with "_n" behind it.
class ventana_qt final : public QMainWindow {
 public:
  /// `forma` must outlive the window. `despues` is called after every handler, so that what it changed is shown.
  ventana_qt(Form& forma, std::function<void()> despues);

  /// Takes over what has changed since the last call; cheap when nothing has.
  void sincronizar();

  /// True while a handler of this window is running, also when it is suspended under a nested one.
  bool ocupada() const { return manejando_ > 0; }

  /// Asked before the window closes; the window stays when it gives False.
  std::function<bool()> puede_cerrarse;
  /// Told why, when a handler ended with an exception, which goes no further.
  std::function<void(const std::string& motivo)> al_fallar;

 protected:
  void closeEvent(QCloseEvent* suceso) override;

 private:
  void atender(const evento& manejador);
  void ejecutar(const evento& manejador);

  Form& forma_;
  std::function<void()> despues_;
  int manejando_ = 0;
  unsigned long vistos_ = 0;
  std::vector<std::function<void()>> actualizaciones_;
};

}  // namespace morvane
