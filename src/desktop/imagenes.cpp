#include "imagenes.h"

#include <QApplication>
#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <QStyleOption>
#include <QSvgRenderer>
#include <algorithm>
#include <utility>

// The resources lie in a static library, whose initializers the linker would leave out. Must stand in no namespace.
static void cargar_recursos() {
  Q_INIT_RESOURCE(imagenes);
}

namespace morvane {
namespace {

QString fichero_de(const std::string& nombre) {
  cargar_recursos();
  return QStringLiteral(":/imagenes/%1.svg").arg(QString::fromStdString(nombre));
}

/// Draws an image in the sizes that are asked for, each once. Not the icon plugin for SVG, which an installation may
/// lack.
class motor_de_imagen final : public QIconEngine {
 public:
  explicit motor_de_imagen(std::string nombre) : nombre_(std::move(nombre)) {}

  QIconEngine* clone() const override { return new motor_de_imagen(*this); }

  void paint(QPainter* pintor, const QRect& sitio, QIcon::Mode modo, QIcon::State estado) override {
    const qreal densidad = pintor->device()->devicePixelRatioF();
    pintor->drawPixmap(sitio, pixmap((QSizeF(sitio.size()) * densidad).toSize(), modo, estado));
  }

  QPixmap pixmap(const QSize& tamano, QIcon::Mode modo, QIcon::State /*estado*/) override {
    const int lado = std::min(tamano.width(), tamano.height());
    if (lado <= 0) return {};
    QPixmap& mapa = hechas_[{lado, modo}];
    if (mapa.isNull()) mapa = hacer(lado, modo);
    return mapa;
  }

  QList<QSize> availableSizes(QIcon::Mode /*modo*/, QIcon::State /*estado*/) override {
    QList<QSize> tamanos;
    for (const int lado : {16, 24, 32, 48, 64, 128}) tamanos.append({lado, lado});
    return tamanos;
  }

 private:
  QPixmap hacer(int lado, QIcon::Mode modo) const {
    QPixmap mapa(lado, lado);
    mapa.fill(Qt::transparent);
    QPainter pintor(&mapa);
    QSvgRenderer(fichero_de(nombre_)).render(&pintor);
    pintor.end();
    if (modo == QIcon::Normal) return mapa;
    QStyleOption opcion;
    opcion.palette = QGuiApplication::palette();
    return QApplication::style()->generatedIconPixmap(modo, mapa, &opcion);
  }

  const std::string nombre_;
  QHash<std::pair<int, QIcon::Mode>, QPixmap> hechas_;
};

}  // namespace

QIcon imagen(const std::string& nombre) {
  if (nombre.empty() || !QFile::exists(fichero_de(nombre))) return {};
  return QIcon(new motor_de_imagen(nombre));
}

void dibujar(const std::string& nombre, QPainter& pintor, const QRectF& sitio) {
  QSvgRenderer dibujo(fichero_de(nombre));
  dibujo.setAspectRatioMode(Qt::KeepAspectRatio);
  if (dibujo.isValid()) dibujo.render(&pintor, sitio);
}

}  // namespace morvane
