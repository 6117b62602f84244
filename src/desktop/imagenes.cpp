#include "imagenes.h"

#include <QApplication>
#include <QHash>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <QStyleOption>
#include <algorithm>
#include <array>
#include <utility>

// The resources lie in a static library, whose initializers the linker would leave out. Must stand in no namespace.
static void cargar_recursos() {
  Q_INIT_RESOURCE(imagenes);
}

namespace morvane {
namespace {

constexpr std::array lados{16, 24, 32, 48, 64, 96, 128, 192, 256};

/// The image in the size that is nearest from above, as it was drawn; a null image where there is none of that name.
QImage dibujada(const std::string& nombre, int lado) {
  cargar_recursos();
  const auto cual = std::ranges::lower_bound(lados, lado);
  const int hay = cual == lados.end() ? lados.back() : *cual;
  return QImage(QStringLiteral(":/imagenes/%1/%2.png").arg(hay).arg(QString::fromStdString(nombre)));
}

QImage a_medida(const std::string& nombre, int lado) {
  QImage entera = dibujada(nombre, lado);
  if (entera.isNull() || entera.width() == lado) return entera;
  return entera.scaled(lado, lado, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

/// Draws an image in the sizes that are asked for, each once.
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
    for (const int lado : lados) tamanos.append({lado, lado});
    return tamanos;
  }

 private:
  QPixmap hacer(int lado, QIcon::Mode modo) const {
    QPixmap mapa = QPixmap::fromImage(a_medida(nombre_, lado));
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
  if (nombre.empty() || dibujada(nombre, lados.front()).isNull()) return {};
  return QIcon(new motor_de_imagen(nombre));
}

void dibujar(const std::string& nombre, QPainter& pintor, const QRectF& sitio) {
  const qreal lado = std::min(sitio.width(), sitio.height()), densidad = pintor.device()->devicePixelRatioF();
  const QImage hecha = a_medida(nombre, static_cast<int>(lado * densidad));
  if (hecha.isNull()) return;
  const QPointF esquina = sitio.center() - QPointF(lado, lado) / 2;
  pintor.drawImage(QRectF(esquina, QSizeF(lado, lado)), hecha);
}

}  // namespace morvane
