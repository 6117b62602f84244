#include "imagenes.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

// The resources lie in a static library, whose initializers the linker would leave out. Must stand in no namespace.
static void cargar_recursos() {
  Q_INIT_RESOURCE(imagenes);
}

namespace morvane {
namespace {

QString fichero_de(const std::string& nombre) {
  return QStringLiteral(":/imagenes/%1.svg").arg(QString::fromStdString(nombre));
}

}  // namespace

// Drawn here and not by the icon plugin for SVG, which an installation may lack.
QIcon imagen(const std::string& nombre) {
  QIcon icono;
  if (nombre.empty()) return icono;
  cargar_recursos();
  QSvgRenderer dibujo(fichero_de(nombre));
  if (!dibujo.isValid()) return icono;
  for (const int lado : {16, 24, 32, 48, 64, 96, 128}) {
    QPixmap mapa(lado, lado);
    mapa.fill(Qt::transparent);
    QPainter pintor(&mapa);
    dibujo.render(&pintor);
    pintor.end();
    icono.addPixmap(mapa);
  }
  return icono;
}

void dibujar(const std::string& nombre, QPainter& pintor, const QRectF& sitio) {
  cargar_recursos();
  QSvgRenderer dibujo(fichero_de(nombre));
  dibujo.setAspectRatioMode(Qt::KeepAspectRatio);
  if (dibujo.isValid()) dibujo.render(&pintor, sitio);
}

}  // namespace morvane
