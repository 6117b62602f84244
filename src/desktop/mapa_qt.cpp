#include "desktop/mapa_qt.h"

#include <QAccessible>
#include <QFontInfo>
#include <QHelpEvent>
#include <QToolTip>
#include <algorithm>
#include <cmath>

#include "accesible.h"
#include "desktop/pincel_mapa.h"
#include "shell/texto_mapa.h"
#include "taller.h"

namespace morvane {
namespace {

/// Of the window's font.
constexpr double cuerpo_de_rotulos = 0.85;

QFont letra_de_rotulos(const QFont& normal, double densidad) {
  QFont letra = normal;
  const double lado = QFontInfo(normal).pixelSize() * cuerpo_de_rotulos * densidad;
  letra.setPixelSize(std::max(6, static_cast<int>(std::lround(lado))));
  return letra;
}

}  // namespace

mapa_qt::mapa_qt(QWidget* padre, const mapa_flash& mapa) : QWidget(padre), mapa_(mapa) {
  hacer_accesible(*this);
  setObjectName(QStringLiteral("mapa_flash"));
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAccessibleName(QStringLiteral("Mapa de la flash"));
  trazar();
}

void mapa_qt::trazar() {
  densidad_ = devicePixelRatioF();
  letra_ = letra_de_rotulos(font(), densidad_);
  const QFontMetrics medidas(letra_);
  const QSize pixeles = (QSizeF(size()) * densidad_).toSize();
  trazado_ = trazado_mapa(pixeles, medidas.height(), medidas.horizontalAdvance(QStringLiteral("000000")));
  const QRect celda = trazado_.celda(0);
  trazo_ = std::max(1, std::min(celda.width(), celda.height()) / 8);
}

void mapa_qt::resizeEvent(QResizeEvent* /*suceso*/) {
  trazar();
}

mapa_qt::estampa mapa_qt::estampa_de(int celda) const {
  return static_cast<estampa>(aspecto_de(mapa_, celda)) | (mapa_.sabe(celda, saber::imagen) ? 0x10U : 0U) |
         (mapa_.sabe(celda, saber::leida) ? 0x20U : 0U);
}

void mapa_qt::poner_al_dia() {
  if (vistos_ == mapa_.cambios()) return;
  vistos_ = mapa_.cambios();
  for (int i = 0; i < celdas_del_mapa; ++i) {
    estampa& dibujada = dibujadas_[static_cast<std::size_t>(i)];
    const estampa nueva = estampa_de(i);
    if (nueva != dibujada) update(en_puntos(trazado_.celda(i)));
    dibujada = nueva;
  }
  for (const tramo& t : {cabeza_, mapa_.cabeza()}) {
    for (int fila = 0; t != tramo{} && fila < trazado_mapa::filas; ++fila) {
      update(en_puntos(trazado_.en_fila(fila, t)));
    }
  }
  cabeza_ = mapa_.cabeza();
}

QRect mapa_qt::en_puntos(const QRect& pixeles) const {
  if (pixeles.isNull()) return {};
  const QRect con_borde = pixeles.adjusted(-3 * trazo_, -3 * trazo_, 3 * trazo_, 3 * trazo_);
  const QRectF puntos(QPointF(con_borde.topLeft()) / densidad_, QSizeF(con_borde.size()) / densidad_);
  return puntos.toAlignedRect();
}

QString mapa_qt::texto_del_cursor() const {
  return qt(texto_de_celda(mapa_, cursor_));
}

QString mapa_qt::resumen() const {
  return qt(resumen_del_mapa(mapa_));
}

int mapa_qt::celda_en(QPointF punto) const {
  return trazado_.celda_en((punto * densidad_).toPoint());
}

bool mapa_qt::event(QEvent* suceso) {
  if (suceso->type() != QEvent::ToolTip) return QWidget::event(suceso);
  const auto* ayuda = static_cast<QHelpEvent*>(suceso);
  const int celda = celda_en(ayuda->pos());
  if (celda < 0) {
    QToolTip::hideText();
  } else {
    QToolTip::showText(ayuda->globalPos(), qt(texto_de_celda(mapa_, celda)), this, en_puntos(trazado_.celda(celda)));
  }
  return true;
}

void mapa_qt::contar(int celda) {
  const QRect sitio = en_puntos(trazado_.celda(celda));
  QToolTip::showText(mapToGlobal(sitio.bottomLeft()), qt(texto_de_celda(mapa_, celda)), this, sitio);
}

void mapa_qt::mover_cursor(int celda) {
  celda = std::clamp(celda, 0, celdas_del_mapa - 1);
  update(en_puntos(trazado_.celda(cursor_)));
  cursor_ = celda;
  update(en_puntos(trazado_.celda(cursor_)));
  QAccessibleValueChangeEvent aviso(this, cursor_);
  QAccessible::updateAccessibility(&aviso);
}

void mapa_qt::keyPressEvent(QKeyEvent* tecla) {
  constexpr int fila = trazado_mapa::celdas_por_fila;
  const int columna = cursor_ % fila;
  int destino = cursor_;
  switch (tecla->key()) {
    case Qt::Key_Left:
      --destino;
      break;
    case Qt::Key_Right:
      ++destino;
      break;
    case Qt::Key_Up:
      destino = cursor_ < fila ? cursor_ : cursor_ - fila;
      break;
    case Qt::Key_Down:
      destino = cursor_ + fila < celdas_del_mapa ? cursor_ + fila : cursor_;
      break;
    case Qt::Key_Home:
      destino = tecla->modifiers().testFlag(Qt::ControlModifier) ? 0 : cursor_ - columna;
      break;
    case Qt::Key_End:
      destino = tecla->modifiers().testFlag(Qt::ControlModifier) ? celdas_del_mapa - 1 : cursor_ - columna + fila - 1;
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return abrir(cursor_);
    default:
      return QWidget::keyPressEvent(tecla);
  }
  mover_cursor(destino);
  contar(cursor_);
}

void mapa_qt::mousePressEvent(QMouseEvent* raton) {
  const int celda = celda_en(raton->position());
  if (raton->button() == Qt::LeftButton && celda >= 0) mover_cursor(celda);
}

void mapa_qt::mouseDoubleClickEvent(QMouseEvent* raton) {
  const int celda = celda_en(raton->position());
  if (raton->button() == Qt::LeftButton && celda >= 0) abrir(celda);
}

void mapa_qt::abrir(int celda) {
  if (al_abrir) al_abrir(tramo_de_celda(celda).desde);
}

void mapa_qt::focusInEvent(QFocusEvent* suceso) {
  QWidget::focusInEvent(suceso);
  update(en_puntos(trazado_.celda(cursor_)));
}

void mapa_qt::focusOutEvent(QFocusEvent* suceso) {
  QWidget::focusOutEvent(suceso);
  update(en_puntos(trazado_.celda(cursor_)));
}

}  // namespace morvane
