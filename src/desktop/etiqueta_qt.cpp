#include <QFontMetricsF>
#include <QLabel>
#include <cmath>

#include "accesible.h"
#include "taller.h"

namespace morvane {
namespace {

/// A text in columns begins on the grid of its characters, as the rows of a list in the same font do.
int sangria(const Label& origen, const taller& t) {
  const double celda = taller::celda(origen.Font);
  const int columna = t.px(std::round(origen.sitio.valor().Left / celda) * celda);
  return std::max(0, columna + t.margen() - t.px(origen.sitio.valor().Left));
}

void poner_en_columnas(QLabel* destino, Label& origen, const QFont& tipo, taller& t) {
  destino->setIndent(sangria(origen, t));
  t.al_cambiar([destino, &origen, tipo] {
    const int ancho = destino->width() - destino->indent();
    destino->setFont(cabida(tipo, qt(origen.Caption), ancho));
  });
}

}  // namespace

void hacer(QWidget& padre, Label& origen, taller& t) {
  auto* destino = new QLabel(&padre);
  destino->setTextFormat(Qt::PlainText);
  const QFont tipo = t.letra_qt(origen.Font, padre.font());
  destino->setFont(tipo);
  mantener(destino, origen, t);
  if (origen.BackColor) colorear(*destino, *origen.BackColor);
  if (!origen.Font.nombre.empty()) poner_en_columnas(destino, origen, tipo, t);
  if (destino->height() >= 2 * destino->fontMetrics().height()) {
    destino->setWordWrap(true);
    destino->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  }
  t.al_cambiar([destino, &origen] { destino->setText(qt(origen.Caption)); });
}

void hacer(QWidget& padre, Line& origen, taller& t) {
  auto* destino = new QWidget(&padre);
  dar_papel(*destino, QAccessible::Separator);
  destino->setFixedHeight(t.px(15));
  mantener(destino, origen, t);
  colorear(*destino, origen.BorderColor);
}

}  // namespace morvane
