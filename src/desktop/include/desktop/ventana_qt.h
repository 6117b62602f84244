#pragma once

#include <QMainWindow>
#include <functional>
#include <vector>

#include "platform/controles.h"

class QBoxLayout;

namespace morvane {

/// Shows one window of the shell. Widgets are made once, from the description; afterwards `sincronizar` takes changed
/// properties over whenever the window's counter has moved, and user events call the handlers of the controls.
class ventana_qt final : public QMainWindow {
 public:
  /// `forma` must outlive the window. `despues` is called after every handler, so that what it changed is shown.
  ventana_qt(Form& forma, std::function<void()> despues);

  /// Takes over what has changed since the last call; cheap when nothing has.
  void sincronizar();

  /// Asked before the window closes; the window stays when it gives False.
  std::function<bool()> puede_cerrarse;

 protected:
  void closeEvent(QCloseEvent* suceso) override;

 private:
  Form& forma_;
  std::function<void()> despues_;
  unsigned long vistos_ = 0;
  std::vector<std::function<void()>> actualizaciones_;
};

}  // namespace morvane
