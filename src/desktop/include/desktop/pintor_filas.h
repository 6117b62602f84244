#pragma once

#include <QStyledItemDelegate>

#include "platform/controles.h"

class QPalette;

namespace morvane {

class lista_filas;

/// The pens for what stands out in a row: never by colour alone where it comes forward, and all can be read on the base
/// of any theme.
QColor tinta_de(realce como, const QPalette& paleta);

/// Styles put margins of their own beside the text of an entry; here it begins where the headings have theirs.
class pintor_filas final : public QStyledItemDelegate {
 public:
  pintor_filas(lista_filas* lista, int margen);

  void paint(QPainter* pintor, const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override;
  QSize sizeHint(const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override;

 private:
  const lista_filas& lista_;
  const int margen_;
};

}  // namespace morvane
