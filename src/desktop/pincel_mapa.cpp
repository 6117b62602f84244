#include "desktop/pincel_mapa.h"

#include <QPainter>
#include <algorithm>

namespace morvane {
namespace {

/// Lines that rise to the right, in one pattern over all cells.
void rayar(QPainter& pintor, const QRect& sitio, int paso, const QPen& lapiz) {
  pintor.save();
  pintor.setClipRect(sitio, Qt::IntersectClip);
  pintor.setPen(lapiz);
  const int alto = sitio.height();
  const int primera = (sitio.left() - alto + sitio.bottom()) / paso * paso - sitio.bottom();
  for (int x = primera; x <= sitio.right(); x += paso) {
    pintor.drawLine(x, sitio.bottom(), x + alto, sitio.bottom() - alto);
  }
  pintor.restore();
}

/// The square in the middle of a cell in which its mark stands.
QRectF sitio_de_la_marca(const QRect& sitio) {
  const double lado = std::min(sitio.width(), sitio.height()) - 2.0;
  return QRectF(QPointF(), QSizeF(lado, lado)).translated(QRectF(sitio).center() - QPointF(lado / 2, lado / 2));
}

void marcar(QPainter& pintor, const QRect& sitio, int trazo, aspecto cual, const QColor& color) {
  const QRectF m = sitio_de_la_marca(sitio);
  pintor.save();
  pintor.setRenderHint(QPainter::Antialiasing);
  pintor.setPen(QPen(color, trazo * 1.4, Qt::SolidLine, Qt::SquareCap));
  if (cual == aspecto::igual) {
    const QPointF codo(m.left() + m.width() * 0.38, m.bottom() - m.height() * 0.12);
    pintor.drawLine(QPointF(m.left() + m.width() * 0.08, m.center().y() + m.height() * 0.08), codo);
    pintor.drawLine(codo, QPointF(m.right() - m.width() * 0.08, m.top() + m.height() * 0.12));
  } else if (cual == aspecto::sin_confirmar) {
    const double x = m.center().x();
    pintor.drawLine(QPointF(x, m.top() + m.height() * 0.12), QPointF(x, m.top() + m.height() * 0.55));
    pintor.drawPoint(QPointF(x, m.bottom() - m.height() * 0.12));
  } else {
    const QRectF aspa = m.adjusted(m.width() * 0.12, m.height() * 0.12, -m.width() * 0.12, -m.height() * 0.12);
    pintor.drawLine(aspa.topLeft(), aspa.bottomRight());
    pintor.drawLine(aspa.topRight(), aspa.bottomLeft());
  }
  pintor.restore();
}

}  // namespace

void enmarcar(QPainter& pintor, const QRect& sitio, int trazo, const QColor& tono) {
  const auto marco = [&](int fuera, const QColor& color_del_marco) {
    pintor.setPen(QPen(color_del_marco, trazo, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    pintor.drawRect(sitio.adjusted(-fuera, -fuera, fuera - trazo, fuera - trazo));
  };
  marco(2 * trazo, QColor(tinta_mapa));
  marco(trazo, tono);
}

tinte tinte_de(aspecto cual) {
  switch (cual) {
    case aspecto::borrada:
      return {QColor(0xFFFFFF), QColor(0xA0A0A0)};
    case aspecto::escrita:
      return {QColor(0x2A62B8), QColor(0x2A62B8)};
    case aspecto::escrita_antes:
      return {QColor(0xCFE3FF), QColor(0x2A62B8)};
    case aspecto::sin_confirmar:
      return {QColor(0xF2A33A), QColor(0x402000)};
    case aspecto::igual:
      return {QColor(0x86D88A), QColor(0x0B3D20)};
    case aspecto::distinta:
      return {QColor(0xA02000), QColor(0xFFFFFF)};
    case aspecto::desconocida:
      break;
  }
  return {QColor(0xC4C4C4), QColor(0xB0B0B0)};
}

void pintar_celda(QPainter& pintor, const QRect& sitio, int trazo, aspecto cual, bool con_imagen, bool con_lectura) {
  const auto [fondo, color] = tinte_de(cual);
  const QRect dentro = sitio.adjusted(0, 0, -trazo, 0);
  pintor.fillRect(dentro, fondo);
  if (cual == aspecto::desconocida) rayar(pintor, dentro, 4 * trazo, QPen(color, trazo));
  if (cual == aspecto::escrita_antes) rayar(pintor, dentro, 4 * trazo, QPen(color, trazo * 1.5));
  const bool con_marca = cual == aspecto::igual || cual == aspecto::distinta || cual == aspecto::sin_confirmar;
  if (con_marca) marcar(pintor, dentro, trazo, cual, color);
  const int barra = std::max(2 * trazo, sitio.height() / 6);
  const QColor tinta(tinta_mapa);
  const QRect abajo(dentro.left(), dentro.bottom() + 1 - barra, dentro.width(), barra);
  const QRect arriba(dentro.left(), dentro.top(), dentro.width(), barra);
  if (con_imagen) {
    pintor.fillRect(abajo.adjusted(0, -trazo, 0, 0), Qt::white);
    pintor.fillRect(abajo, tinta);
  }
  if (con_lectura) {
    pintor.fillRect(arriba.adjusted(0, 0, 0, trazo), Qt::white);
    pintor.fillRect(arriba, tinta);
  }
}

}  // namespace morvane
