#pragma once

#include <QFileDialog>
#include <QMessageBox>
#include <functional>
#include <string>

#include "platform/caja.h"
#include "platform/controles.h"

class QPushButton;

namespace morvane {

/// One message box. The initial of a caption presses its button, with Alt or without; Escape presses Cancel, or the
/// button of a box that has only one, and nothing else; closing the window in another way answers nothing. Its text can
/// be marked, and is copied whole where no part is. What explains it further stands under it. No title is cut off.
class ventana_caja final : public QMessageBox {
 public:
  /// Without an explanation `explicacion` is empty.
  ventana_caja(const caja& mensaje, const std::string& explicacion, QWidget* duena);

  respuesta_caja respuesta() const { return respuesta_; }

 protected:
  void keyPressEvent(QKeyEvent* tecla) override;
  void closeEvent(QCloseEvent* suceso) override;

 private:
  QPushButton* anadir(respuesta_caja valor);
  /// Title, text and explanation.
  QString todo() const;
  QAbstractButton* con_inicial(const QString& letra) const;

  respuesta_caja respuesta_ = vbNinguna;
  QAbstractButton* escape_ = nullptr;
};

/// The open dialog, with Qt's own look on all desktops. A file of any of the kinds can be typed, whichever is chosen.
class dialogo_abrir final : public QFileDialog {
 public:
  /// `avisar` shows a box over the dialog.
  dialogo_abrir(const CommonDialog& descripcion, QWidget* duena, std::function<void(const caja&)> avisar);

  /// The chosen path as the host's bytes, or empty.
  std::string ruta() const;

 protected:
  /// A file of none of the kinds that are offered is refused with a box, and the dialog stays.
  void accept() override;

 private:
  std::function<void(const caja&)> avisar_;
};

}  // namespace morvane
