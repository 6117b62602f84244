#include "lista_qt.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QListView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>
#include <limits>

#include "taller.h"

namespace morvane {
namespace {

/// Rows whose texts are made when the list shows them.
class modelo_filas final : public QAbstractListModel {
 public:
  using QAbstractListModel::QAbstractListModel;

  void poner(std::shared_ptr<const filas> nuevas) {
    if (nuevas == filas_) return;
    beginResetModel();
    filas_ = std::move(nuevas);
    constexpr std::size_t limite = std::numeric_limits<int>::max();
    cuantas_ = filas_ ? static_cast<int>(std::min(filas_->cuantas(), limite)) : 0;
    endResetModel();
  }

  int rowCount(const QModelIndex& superior) const override { return superior.isValid() ? 0 : cuantas_; }

  /// The list asks for every row before it shows the first.
  QModelIndex index(int fila, int columna, const QModelIndex& superior) const override {
    const bool hay = fila >= 0 && fila < cuantas_ && columna == 0 && !superior.isValid();
    return hay ? createIndex(fila, columna) : QModelIndex();
  }

  QVariant data(const QModelIndex& indice, int papel) const override {
    if (papel != Qt::DisplayRole || !indice.isValid()) return {};
    return qt(filas_->texto(static_cast<std::size_t>(indice.row())));
  }

 private:
  std::shared_ptr<const filas> filas_;
  int cuantas_ = 0;
};

/// Styles put margins of their own beside the text of an entry; here it begins where the headings have theirs.
class pintor_filas final : public QStyledItemDelegate {
 public:
  pintor_filas(QListView* lista, int margen)
      : QStyledItemDelegate(lista), margen_(std::max(0, margen - lista->frameWidth())) {}

  void paint(QPainter* pintor, const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override {
    QStyleOptionViewItem fondo = opcion;
    initStyleOption(&fondo, indice);
    const QString texto = std::exchange(fondo.text, {});
    const QWidget* lista = fondo.widget;
    lista->style()->drawControl(QStyle::CE_ItemViewItem, &fondo, pintor, lista);
    const bool elegida = fondo.state.testFlag(QStyle::State_Selected);
    const auto grupo = fondo.state.testFlag(QStyle::State_Active) ? QPalette::Active : QPalette::Inactive;
    pintor->setFont(fondo.font);
    pintor->setPen(fondo.palette.color(grupo, elegida ? QPalette::HighlightedText : QPalette::Text));
    pintor->drawText(fondo.rect.topLeft() + QPoint(margen_, fondo.fontMetrics.ascent()), texto);
  }

  QSize sizeHint(const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override {
    const QString texto = indice.data().toString();
    return {margen_ + opcion.fontMetrics.horizontalAdvance(texto), opcion.fontMetrics.height()};
  }

 private:
  const int margen_;
};

/// All rows are as high and as wide as the first one, so that nothing has to be asked of the others beforehand.
QListView* vista_de_filas(QWidget& padre) {
  auto* vista = new QListView(&padre);
  vista->setUniformItemSizes(true);
  vista->setWordWrap(false);
  vista->setTextElideMode(Qt::ElideNone);
  vista->setEditTriggers(QAbstractItemView::NoEditTriggers);
  vista->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  vista->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  return vista;
}

}  // namespace

void ir_a_fila(QWidget& ventana, const ListBox& lista, int fila) {
  auto* vista = ventana.findChild<QListView*>(qt(lista.Name));
  if (vista == nullptr || vista->model()->rowCount() == 0) return;
  const QModelIndex cual = vista->model()->index(std::min(fila, vista->model()->rowCount() - 1), 0);
  vista->setCurrentIndex(cual);
  vista->scrollTo(cual, QAbstractItemView::PositionAtTop);
  vista->setFocus();
}

void hacer(QWidget& padre, ListBox& origen, taller& t) {
  auto* destino = vista_de_filas(padre);
  auto* modelo = new modelo_filas(destino);
  destino->setFont(t.letra_qt(origen.Font, padre.font()));
  destino->setItemDelegate(new pintor_filas(destino, t.margen()));
  destino->setModel(modelo);
  destino->setAccessibleName(nombre_accesible(t.titulo, {}, origen.Name));
  mantener(destino, origen, t);
  t.al_cambiar([modelo, &origen] { modelo->poner(origen.List); });
}

}  // namespace morvane
