#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <vector>

#include "desktop/mapa_qt.h"
#include "desktop/pincel_mapa.h"

namespace morvane {
namespace {

constexpr QRgb borde_de_bloque = 0xFF808080;
constexpr QRgb color_de_cabeza = 0xFFFFD400;

QString hexadecimal(std::int32_t dir, int digitos) {
  return QStringLiteral("%1").arg(dir, digitos, 16, QLatin1Char('0')).toUpper();
}

/// A sample of the legend and its name.
struct entrada {
  aspecto como;
  QString nombre;
  bool imagen = false, lectura = false, cabeza = false;
};

std::vector<entrada> entradas_de_leyenda() {
  std::vector<entrada> todas;
  for (int i = 0; i < aspectos; ++i) {
    const auto cual = static_cast<aspecto>(i);
    todas.push_back({.como = cual, .nombre = QString::fromUtf8(nombre_de(cual))});
  }
  todas.push_back({.como = aspecto::borrada, .nombre = QStringLiteral("En la imagen"), .imagen = true});
  todas.push_back({.como = aspecto::borrada, .nombre = QStringLiteral("Leída"), .lectura = true});
  todas.push_back({.como = aspecto::desconocida, .nombre = QStringLiteral("En curso"), .cabeza = true});
  return todas;
}

}  // namespace

void mapa_qt::paintEvent(QPaintEvent* suceso) {
  if (densidad_ != devicePixelRatioF()) trazar();
  const auto a_la_vista = [&](const QRect& sitio) { return suceso->region().intersects(en_puntos(sitio)); };
  QPainter pintor(this);
  pintor.fillRect(suceso->rect(), palette().window());
  pintor.scale(1 / densidad_, 1 / densidad_);
  pintor.setFont(letra_);
  for (int i = 0; i < celdas_del_mapa; ++i) {
    if (a_la_vista(trazado_.celda(i))) pintar(pintor, i);
  }
  for (int i = 0; i < trazado_mapa::filas; ++i) {
    if (a_la_vista(trazado_.fila(i))) pintar_bloque(pintor, i);
    const bool lados = a_la_vista(trazado_.direccion(i, false)) || a_la_vista(trazado_.direccion(i, true));
    if (lados) pintar_direcciones(pintor, i);
  }
  for (int i = 0; i < trazado_mapa::grupos; ++i) {
    if (a_la_vista(trazado_.desplazamiento(i))) pintar_desplazamiento(pintor, i);
  }
  if (a_la_vista(trazado_.leyenda())) pintar_leyenda(pintor);
  for (int i = 0; i < trazado_mapa::filas; ++i) {
    const QRect cabeza = trazado_.en_fila(i, mapa_.cabeza());
    if (!cabeza.isNull()) enmarcar(pintor, cabeza, trazo_, QColor(color_de_cabeza));
  }
  if (hasFocus()) enmarcar(pintor, trazado_.celda(cursor_), trazo_, Qt::white);
}

void mapa_qt::pintar(QPainter& pintor, int celda) const {
  pintar_celda(pintor, trazado_.celda(celda), trazo_, aspecto_de(mapa_, celda), mapa_.sabe(celda, saber::imagen),
               mapa_.sabe(celda, saber::leida));
}

void mapa_qt::pintar_bloque(QPainter& pintor, int fila) const {
  const QRect sitio = trazado_.fila(fila).adjusted(-trazo_, -trazo_, 0, 0);
  pintor.fillRect(QRect(sitio.left(), sitio.top(), sitio.width(), trazo_), QColor(borde_de_bloque));
  pintor.fillRect(QRect(sitio.left(), sitio.bottom(), sitio.width(), trazo_), QColor(borde_de_bloque));
}

void mapa_qt::pintar_direcciones(QPainter& pintor, int fila) const {
  const std::int32_t dir = fila * chip.bloque;
  pintor.setPen(palette().color(QPalette::WindowText));
  pintor.drawText(trazado_.direccion(fila, false), Qt::AlignRight | Qt::AlignVCenter, hexadecimal(dir, 6));
  pintor.drawText(trazado_.direccion(fila, true), Qt::AlignLeft | Qt::AlignVCenter,
                  hexadecimal(dir + chip.bloque - 1, 6));
}

void mapa_qt::pintar_desplazamiento(QPainter& pintor, int grupo) const {
  const std::int32_t dir = grupo * trazado_mapa::celdas_por_grupo * bytes_por_celda;
  pintor.setPen(palette().color(QPalette::WindowText));
  pintor.drawText(trazado_.desplazamiento(grupo), Qt::AlignLeft | Qt::AlignVCenter,
                  QLatin1Char('+') + hexadecimal(dir, 4));
}

void mapa_qt::pintar_muestra(QPainter& pintor, const QRect& sitio, aspecto como, bool imagen, bool lectura,
                             bool cabeza) const {
  pintar_celda(pintor, sitio, trazo_, como, imagen, lectura);
  if (cabeza)
    return enmarcar(pintor, sitio.adjusted(trazo_, trazo_, -trazo_, -trazo_), trazo_, QColor(color_de_cabeza));
  pintor.setPen(QPen(QColor(borde_de_bloque), trazo_, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  pintor.drawRect(sitio.adjusted(0, 0, -trazo_, -trazo_));
}

/// Evenly spread over the whole width; in a smaller font where that is too narrow.
void mapa_qt::pintar_leyenda(QPainter& pintor) const {
  const QRect sitio = trazado_.leyenda();
  const auto entradas = entradas_de_leyenda();
  const int alto = sitio.height() - 2 * trazo_, ancho = std::max(trazado_.celda(0).width(), sitio.height() * 3 / 4);
  const int junto = ancho + 4 * trazo_, separacion = sitio.height() / 2;
  const auto largo = [&] {
    int todo = -separacion;
    for (const entrada& una : entradas) {
      todo += junto + pintor.fontMetrics().horizontalAdvance(una.nombre) + separacion;
    }
    return todo;
  };
  pintor.save();
  QFont letra = letra_;
  for (; largo() > sitio.width() && letra.pixelSize() > 4; pintor.setFont(letra)) {
    letra.setPixelSize(letra.pixelSize() - 1);
  }
  const int de_mas = std::max(0, sitio.width() - largo()) / static_cast<int>(entradas.size() - 1);
  int x = sitio.left();
  for (const entrada& una : entradas) {
    pintar_muestra(pintor, {x, sitio.top() + trazo_, ancho, alto}, una.como, una.imagen, una.lectura, una.cabeza);
    const int texto = pintor.fontMetrics().horizontalAdvance(una.nombre);
    pintor.setPen(palette().color(QPalette::WindowText));
    pintor.drawText(QRect(x + junto, sitio.top(), texto + trazo_, sitio.height()), Qt::AlignLeft | Qt::AlignVCenter,
                    una.nombre);
    x += junto + texto + separacion + de_mas;
  }
  pintor.restore();
}

}  // namespace morvane
