#include "desktop/recepcion_qt.h"

#include <QApplication>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QRubberBand>
#include <QUrl>
#include <filesystem>

#include "platform/rutas.h"
#include "shell/proyecto.h"

namespace morvane {
namespace {

/// What is offered only to be moved here is not taken: the program that it comes from would delete it.
bool sin_mover(QDropEvent& suceso) {
  for (const Qt::DropAction como : {Qt::CopyAction, Qt::LinkAction}) {
    if (!suceso.possibleActions().testFlag(como)) continue;
    suceso.setDropAction(como);
    return true;
  }
  return false;
}

}  // namespace

std::string firmware_ofrecido(const QMimeData& oferta) {
  const QList<QUrl> lugares = oferta.urls();
  if (lugares.size() != 1 || !lugares.first().isLocalFile()) return {};
  const QString maquina = lugares.first().host();
  if (!maquina.isEmpty() && maquina != QLatin1String("localhost")) return {};
  // Not toLocalFile, which changes names that are no UTF-8.
  const QByteArray codificada = lugares.first().path(QUrl::FullyEncoded).toLatin1();
  const QByteArray parte = QByteArray::fromPercentEncoding(codificada);
  // Behind it a host would not see the rest of the name.
  if (parte.contains('\0')) return {};
  const std::filesystem::path ruta = ruta_de_url(parte.toStdString());
  const std::string nombre = texto_de(ruta);
  std::error_code error;
  return es_firmware(nombre) && std::filesystem::is_regular_file(ruta, error) ? nombre : std::string();
}

recepcion_qt::recepcion_qt(ventana_qt& ventana, std::function<void(const std::string& ruta)> al_recibir)
    : ventana_(ventana),
      marco_(new QRubberBand(QRubberBand::Rectangle, ventana.centralWidget())),
      al_recibir_(std::move(al_recibir)) {
  marco_->setObjectName(QStringLiteral("marco_soltar"));
  ventana.setAcceptDrops(true);
  // They would take the path for a text.
  const auto campos = ventana.findChildren<QLineEdit*>();
  for (QLineEdit* campo : campos) campo->setAcceptDrops(false);
  ventana.installEventFilter(this);
  luego_.setSingleShot(true);
  connect(&luego_, &QTimer::timeout, this, [this] { recibir(); });
}

bool recepcion_qt::eventFilter(QObject* quien, QEvent* suceso) {
  const QEvent::Type tipo = suceso->type();
  if (tipo == QEvent::DragLeave) senalar(false);
  if (tipo != QEvent::DragEnter && tipo != QEvent::DragMove && tipo != QEvent::Drop) {
    return QObject::eventFilter(quien, suceso);
  }
  auto& oferta = static_cast<QDropEvent&>(*suceso);
  const std::string ruta = firmware_ofrecido(*oferta.mimeData());
  const bool libre = QApplication::activeModalWidget() == nullptr;
  oferta.setAccepted(libre && !ruta.empty() && sin_mover(oferta));
  senalar(tipo != QEvent::Drop && oferta.isAccepted());
  if (tipo == QEvent::Drop && oferta.isAccepted()) {
    soltada_ = ruta;
    luego_.start(0);
  }
  return true;
}

void recepcion_qt::senalar(bool encima) {
  marco_->setGeometry(ventana_.centralWidget()->rect());
  marco_->setVisible(encima);
}

void recepcion_qt::recibir() {
  if (!ventana_.isVisible()) return;
  ventana_.activateWindow();
  ventana_.atender([this, ruta = soltada_] { al_recibir_(ruta); });
}

}  // namespace morvane
