#include "desktop/pintor_filas.h"

#include <QApplication>
#include <QPainter>
#include <QTextLayout>
#include <algorithm>

#include "lista_qt.h"

namespace morvane {
namespace {

/// How much of the text's own colour is left in what steps back.
constexpr double parte_tenue = 0.6, parte_ignorada = 0.35;
constexpr QRgb rojo_oscuro = 0xFFB00020, rojo_claro = 0xFFFF9E9E, ambar = 0xFFFFD54F;

QColor mezcla(const QColor& texto, const QColor& base, double parte) {
  const auto una = [parte](int de_texto, int de_base) {
    return static_cast<int>(de_base + (de_texto - de_base) * parte);
  };
  return {una(texto.red(), base.red()), una(texto.green(), base.green()), una(texto.blue(), base.blue())};
}

QTextCharFormat formato_de(realce como, const QPalette& paleta, bool elegida) {
  QTextCharFormat formato;
  formato.setFontUnderline(como == realce::distinto || como == realce::hallado);
  if (como == realce::ignorado) formato.setFontItalic(true);
  if (como == realce::hallado) formato.setBackground(QColor(ambar));
  // On the colour of a chosen row the others would be lost.
  if (!elegida || como == realce::hallado) formato.setForeground(tinta_de(como, paleta));
  return formato;
}

QList<QTextLayout::FormatRange> formatos(const std::vector<parte_realzada>& partes, const QPalette& paleta,
                                         bool elegida) {
  QList<QTextLayout::FormatRange> lista;
  for (const parte_realzada& una : partes) {
    lista.append({static_cast<int>(una.desde), static_cast<int>(una.cuantos), formato_de(una.como, paleta, elegida)});
  }
  return lista;
}

}  // namespace

QColor tinta_de(realce como, const QPalette& paleta) {
  const QColor texto = paleta.color(QPalette::Text), base = paleta.color(QPalette::Base);
  switch (como) {
    case realce::tenue:
      return mezcla(texto, base, parte_tenue);
    case realce::ignorado:
      return mezcla(texto, base, parte_ignorada);
    case realce::distinto:
      return qGray(base.rgb()) > 127 ? rojo_oscuro : rojo_claro;
    case realce::hallado:
      break;
  }
  return Qt::black;
}

pintor_filas::pintor_filas(lista_filas* lista, int margen)
    : QStyledItemDelegate(lista), lista_(*lista), margen_(std::max(0, margen - lista->frameWidth())) {}

void pintor_filas::paint(QPainter* pintor, const QStyleOptionViewItem& opcion, const QModelIndex& indice) const {
  QStyleOptionViewItem fondo = opcion;
  initStyleOption(&fondo, indice);
  const QString texto = std::exchange(fondo.text, {});
  lista_.style()->drawControl(QStyle::CE_ItemViewItem, &fondo, pintor, &lista_);
  const bool elegida = fondo.state.testFlag(QStyle::State_Selected);
  fondo.palette.setCurrentColorGroup(fondo.state.testFlag(QStyle::State_Active) ? QPalette::Active
                                                                                : QPalette::Inactive);
  QTextLayout renglon(texto, fondo.font);
  renglon.setFormats(formatos(lista_.partes(indice.row()), fondo.palette, elegida));
  renglon.beginLayout();
  renglon.createLine();
  renglon.endLayout();
  pintor->setPen(fondo.palette.color(elegida ? QPalette::HighlightedText : QPalette::Text));
  renglon.draw(pintor, fondo.rect.topLeft() + QPoint(margen_, 0));
}

QSize pintor_filas::sizeHint(const QStyleOptionViewItem& opcion, const QModelIndex& indice) const {
  const QString texto = indice.data().toString();
  return {margen_ + opcion.fontMetrics.horizontalAdvance(texto), opcion.fontMetrics.height()};
}

}  // namespace morvane
