#include "imagenes.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>
#include <memory>

// The resources lie in a static library, whose initializers the linker would leave out. Must stand in no namespace.
static void cargar_recursos() {
  Q_INIT_RESOURCE(imagenes);
}

namespace morvane {
namespace {

QString fichero_de(const std::string& nombre) {
  return QStringLiteral(":/imagenes/%1.svg").arg(QString::fromStdString(nombre));
}

/// Draws an image at whatever size and density the screen asks for.
class motor_svg final : public QIconEngine {
 public:
  explicit motor_svg(std::shared_ptr<QSvgRenderer> dibujo) : dibujo_(std::move(dibujo)) {}

  void paint(QPainter* pintor, const QRect& sitio, QIcon::Mode modo, QIcon::State estado) override {
    const double densidad = pintor->device()->devicePixelRatioF();
    QPixmap mapa = pixmap((QSizeF(sitio.size()) * densidad).toSize(), modo, estado);
    mapa.setDevicePixelRatio(densidad);
    pintor->drawPixmap(sitio.topLeft(), mapa);
  }

  QPixmap pixmap(const QSize& tamano, QIcon::Mode modo, QIcon::State /*estado*/) override {
    QPixmap mapa(tamano);
    mapa.fill(Qt::transparent);
    QPainter pintor(&mapa);
    dibujo_->render(&pintor);
    pintor.end();
    if (modo != QIcon::Disabled) return mapa;
    const QStyleOption opcion;
    return QApplication::style()->generatedIconPixmap(modo, mapa, &opcion);
  }

  QList<QSize> availableSizes(QIcon::Mode /*modo*/, QIcon::State /*estado*/) override {
    QList<QSize> tamanos;
    for (const int lado : {16, 24, 32, 48, 64, 128}) tamanos.append({lado, lado});
    return tamanos;
  }

  QIconEngine* clone() const override { return new motor_svg(*this); }

 private:
  std::shared_ptr<QSvgRenderer> dibujo_;
};

}  // namespace

// Drawn here and not by the icon plugin for SVG, which an installation may lack.
QIcon imagen(const std::string& nombre) {
  if (nombre.empty()) return {};
  cargar_recursos();
  auto dibujo = std::make_shared<QSvgRenderer>(fichero_de(nombre));
  return dibujo->isValid() ? QIcon(new motor_svg(std::move(dibujo))) : QIcon();
}

void dibujar(const std::string& nombre, QPainter& pintor, const QRectF& sitio) {
  cargar_recursos();
  QSvgRenderer dibujo(fichero_de(nombre));
  dibujo.setAspectRatioMode(Qt::KeepAspectRatio);
  if (dibujo.isValid()) dibujo.render(&pintor, sitio);
}

}  // namespace morvane
