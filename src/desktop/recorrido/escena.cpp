#include "escena.h"

#include <QApplication>
#include <QPainter>
#include <QWidget>
#include <algorithm>

namespace morvane {
namespace {

constexpr int alto_titulo = 22, margen = 12;
constexpr QRgb color_mesa = 0xFF5B6B7B, color_titulo = 0xFF2F4256;

bool con_titulo(const QWidget& ventana) {
  return ventana.windowType() == Qt::Window || ventana.windowType() == Qt::Dialog;
}

QRect lugar_de(const QWidget& ventana) {
  return ventana.geometry().adjusted(0, con_titulo(ventana) ? -alto_titulo : 0, 0, 0);
}

/// While a menu is open, no window is active.
const QWidget* duena_del_menu() {
  const QWidget* menu = QApplication::activePopupWidget();
  return menu != nullptr && menu->parentWidget() != nullptr ? menu->parentWidget()->window() : nullptr;
}

/// From the one at the back to the one in front.
QList<QWidget*> ventanas() {
  QList<QWidget*> todas;
  for (QWidget* una : QApplication::topLevelWidgets()) {
    if (una->isVisible()) todas.append(una);
  }
  const auto altura = [](const QWidget* una) {
    if (una->windowType() == Qt::ToolTip || una->windowType() == Qt::Popup) return 3;
    if (una->isModal()) return 2;
    return una->isActiveWindow() || una == duena_del_menu() ? 1 : 0;
  };
  std::ranges::stable_sort(todas, {}, altura);
  return todas;
}

void pintar(QPainter& pintor, QWidget& ventana) {
  const QRect lugar = lugar_de(ventana);
  if (con_titulo(ventana)) {
    const QRect titulo(lugar.topLeft(), QSize(lugar.width(), alto_titulo));
    pintor.fillRect(titulo, QColor(color_titulo));
    pintor.setPen(Qt::white);
    pintor.drawText(titulo.adjusted(8, 0, -8, 0), Qt::AlignVCenter | Qt::AlignLeft, ventana.windowTitle());
  }
  pintor.drawPixmap(ventana.geometry().topLeft(), ventana.grab());
}

}  // namespace

QImage escena() {
  const QList<QWidget*> todas = ventanas();
  QRect todo;
  for (const QWidget* una : todas) todo = todo.united(lugar_de(*una));
  todo.adjust(-margen, -margen, margen, margen);
  QImage imagen(todo.size(), QImage::Format_RGB32);
  imagen.fill(color_mesa);
  QPainter pintor(&imagen);
  pintor.translate(-todo.topLeft());
  for (QWidget* una : todas) pintar(pintor, *una);
  return imagen;
}

}  // namespace morvane
