#pragma once

#include <QTimer>
#include <QToolButton>
#include <functional>
#include <string>

#include "shell/contacto.h"

namespace morvane {

/// A button in two lines that says which port and board the program works with, and when the board last answered; a
/// warning stands out in colour and by a mark. Has no frame until it is pointed at.
class letrero_qt final : public QToolButton {
 public:
  /// `rotular` gives port and device in a few words; it may take some milliseconds. `libre`: no command runs.
  letrero_qt(QWidget* padre, const frm_principal& f, std::function<std::string()> rotular, std::function<bool()> libre);

  /// Asks anew what is at the port, and shows it; a moment later, so that nobody waits for it, and not before `libre`.
  void preguntar();
  /// Shows what has changed since; cheap when nothing has.
  void mirar();

 protected:
  void paintEvent(QPaintEvent* suceso) override;

 private:
  void averiguar();

  const frm_principal& f_;
  std::function<std::string()> rotular_;
  std::function<bool()> libre_;
  QTimer luego_;
  /// What is at the port, and which port that is; the port alone until it has been asked.
  std::string rotulo_, de_;
  letrero dicho_;
};

}  // namespace morvane
