#pragma once

#include <functional>
#include <string>

#include "desktop/teclado.h"
#include "platform/plataforma.h"
#include "platform/sistema.h"

class QDialog;
class QWidget;

namespace morvane {

/// The title of the application, which stands over boxes that have none of their own.
inline constexpr const char* titulo_aplicacion = "Morvane";

/// The desktop as the system's platform: Qt's event loop, message boxes, the open dialog, the steady clock. A
/// QApplication must exist.
class plataforma_qt final : public plataforma {
 public:
  instante ahora() const override;
  std::string hora() const override;
  std::string ShowOpen(const CommonDialog& dialogo) override;
  [[noreturn]] void terminar() override;
  anfitrion& maquina() override { return maquina_; }

  /// Brings all windows up to date; called before each pass and before each box.
  std::function<void()> sincronizar;
  /// The window that boxes and dialogs belong to when none of the program's is active; null before it is shown.
  QWidget* duena = nullptr;

  /// Nobody will answer any more: the open box or dialog ends as if its window had been closed, and those that come
  /// later are not shown and end in the same way. What a box had to say then goes to standard error.
  void abandonar_cajas();

 protected:
  void eventos() override;
  respuesta_caja mostrar(const caja& mensaje, const std::string& explicacion) override;

 private:
  void esperar_a(QDialog& dialogo);
  /// The window that the user is working in, so that a box brings no other one to the front.
  QWidget* de_quien() const;

  anfitrion_del_sistema maquina_;
  teclado teclado_{[this] { return ahora(); }};
  bool desatendida_ = false;
};

}  // namespace morvane
