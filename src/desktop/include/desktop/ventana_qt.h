#pragma once

#include <QMainWindow>
#include <QSize>
#include <functional>
#include <string>
#include <vector>

#include "platform/controles.h"

class QMenu;

namespace morvane {

struct taller;

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

  /// Runs `toma` now and whenever a property of the window has changed.
  void al_cambiar(std::function<void()> toma);

  /// Runs a handler as if the user had caused it.
  void atender(const evento& manejador);

  /// True while a handler of this window is running, also when it is suspended under a nested one.
  bool ocupada() const { return manejando_ > 0; }

  /// The context menu of the window's surface; it may be empty.
  QMenu& contextual() { return *contextual_; }

  /// Called when a handler begins.
  std::function<void()> al_empezar;
  /// Asked before the window closes; the window stays when it gives False.
  std::function<bool()> puede_cerrarse;
  /// Told why, when a handler ended with an exception, which goes no further.
  std::function<void(const std::string& motivo)> al_fallar;

 protected:
  void closeEvent(QCloseEvent* suceso) override;
  /// Enter presses the button that has the focus, as Space does; Shift+F10 opens the context menu; Escape closes a
  /// window without menus.
  void keyPressEvent(QKeyEvent* tecla) override;
  void contextMenuEvent(QContextMenuEvent* suceso) override;
  bool event(QEvent* suceso) override;

 private:
  void poner_menus(taller& t);
  void poner_superficie(taller& t);
  void avisar_tamano();
  void pedir_contextual();
  void ejecutar(const evento& manejador);

  Form& forma_;
  const double escala_;
  std::function<void()> despues_;
  int manejando_ = 0;
  unsigned long vistos_ = 0;
  std::vector<std::function<void()>> actualizaciones_;
  QMenu* contextual_ = nullptr;
  /// What `Resize` was told last.
  QSize tamano_;
};

}  // namespace morvane
