#pragma once

#include <functional>
#include <vector>

#include "platform/plataforma.h"

class QMessageBox;
class QWidget;

namespace morvane {

/// The desktop as the system's platform: Qt's event loop, message boxes, the open dialog, the steady clock.
class plataforma_qt final : public plataforma {
 public:
  instante ahora() const override;
  std::string hora() const override;
  std::string ShowOpen(const CommonDialog& dialogo) override;
  [[noreturn]] void terminar() override;

  /// Brings all windows up to date; called before each pass and before each box.
  std::function<void()> sincronizar;
  /// The window that boxes and dialogs belong to; null before it is shown.
  QWidget* duena = nullptr;
  /// Closes the open box, if any, as if its window had been closed.
  void abandonar_caja();

 protected:
  void eventos() override;
  respuesta_caja mostrar(const caja& mensaje) override;

 private:
  QMessageBox* abierta_ = nullptr;
};

}  // namespace morvane
