#pragma once

#include <QObject>
#include <QTimer>
#include <functional>
#include <string>

#include "desktop/ventana_qt.h"

class QMimeData;
class QRubberBand;

namespace morvane {

/// Takes firmware files that the user drops on a window, and frames the window while one is held over it. What is no
/// single firmware file on this machine is refused while it is still being dragged, and so is everything while a box is
/// open.
class recepcion_qt final : public QObject {
 public:
  /// `ventana` must outlive it. `al_recibir` gets the path as the host's bytes, as a handler of the window, once the
  /// program that the file comes from has been let go.
  recepcion_qt(ventana_qt& ventana, std::function<void(const std::string& ruta)> al_recibir);

 protected:
  bool eventFilter(QObject* quien, QEvent* suceso) override;

 private:
  void recibir();
  void senalar(bool encima);

  ventana_qt& ventana_;
  QRubberBand* marco_;
  std::function<void(const std::string& ruta)> al_recibir_;
  std::string soltada_;
  QTimer luego_;
};

/// The path of the one firmware file that is offered, as the host's bytes, or empty.
std::string firmware_ofrecido(const QMimeData& oferta);

}  // namespace morvane
