#include "lista_qt.h"

#include <QAbstractListModel>
#include <QLabel>
#include <QScrollBar>
#include <QStringList>
#include <algorithm>
#include <limits>

#include "desktop/pintor_filas.h"
#include "taller.h"

namespace morvane {

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

  int rowCount(const QModelIndex& superior = {}) const override { return superior.isValid() ? 0 : cuantas_; }

  /// The list asks for every row before it shows the first.
  QModelIndex index(int fila, int columna = 0, const QModelIndex& superior = {}) const override {
    const bool hay = fila >= 0 && fila < cuantas_ && columna == 0 && !superior.isValid();
    return hay ? createIndex(fila, columna) : QModelIndex();
  }

  QVariant data(const QModelIndex& indice, int papel) const override {
    if (papel != Qt::DisplayRole || !indice.isValid()) return {};
    return texto(indice.row());
  }

  /// Of a row that exists.
  QString texto(int fila) const { return qt(filas_->texto(static_cast<std::size_t>(fila))); }
  std::vector<parte_realzada> realces(int fila) const { return filas_->realces(static_cast<std::size_t>(fila)); }

 private:
  std::shared_ptr<const filas> filas_;
  int cuantas_ = 0;
};

// All rows are as high and as wide as the first one, so that nothing has to be asked of the others beforehand.
lista_filas::lista_filas(QWidget& padre, int margen)
    : QListView(&padre), modelo_(new modelo_filas(this)), vacia_(new QLabel(viewport())) {
  setUniformItemSizes(true);
  setWordWrap(false);
  setTextElideMode(Qt::ElideNone);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setSelectionMode(QAbstractItemView::ExtendedSelection);
  // Not by items, which takes a fifth longer where there are many; whole rows come of coming to rest on them.
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int valor) { asentar(valor); });
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  setItemDelegate(new pintor_filas(this, margen));
  setModel(modelo_);
  vacia_->setObjectName(QStringLiteral("vacia"));
  vacia_->setTextFormat(Qt::PlainText);
  vacia_->setAlignment(Qt::AlignCenter);
  vacia_->setWordWrap(true);
  vacia_->hide();
}

void lista_filas::decir_vacia(const QString& texto) {
  QPalette tinta = palette();
  tinta.setColor(QPalette::WindowText, tinta_de(realce::tenue, tinta));
  vacia_->setPalette(tinta);
  vacia_->setFont(window()->font());
  vacia_->setText(texto);
  vacia_->setVisible(!texto.isEmpty());
  setAccessibleDescription(texto);
}

void lista_filas::asentar(int valor) {
  const int de_mas = fila_ > 0 ? valor % fila_ : 0;
  if (de_mas != 0) verticalScrollBar()->setValue(valor - de_mas + (2 * de_mas > fila_ ? fila_ : 0));
}

void lista_filas::reservar(int alto) {
  reservado_ = alto;
  fila_ = modelo_->rowCount() > 0 ? sizeHintForRow(0) : 0;
  const int ancho_de_barra = horizontalScrollBar()->isVisible() ? horizontalScrollBar()->height() : 0;
  const int libre = height() - 2 * frameWidth() - ancho_de_barra - alto;
  const int de_mas = fila_ > 0 && libre > fila_ ? libre % fila_ : 0;
  setViewportMargins(0, 0, 0, alto + de_mas);
}

void lista_filas::resizeEvent(QResizeEvent* suceso) {
  QListView::resizeEvent(suceso);
  vacia_->setGeometry(viewport()->rect());
  reservar(reservado_);
}

void lista_filas::poner(std::shared_ptr<const filas> nuevas) {
  modelo_->poner(std::move(nuevas));
  reservar(reservado_);
}

void lista_filas::elegir(int fila) {
  selectionModel()->setCurrentIndex(modelo_->index(fila), QItemSelectionModel::ClearAndSelect);
}

void lista_filas::ir_a(int fila) {
  if (modelo_->rowCount() == 0) return;
  elegir(std::min(fila, modelo_->rowCount() - 1));
  scrollTo(currentIndex(), QAbstractItemView::PositionAtTop);
  setFocus();
}

QString lista_filas::copia_elegidas() const {
  std::vector<int> elegidas;
  const QItemSelection tramos = selectionModel()->selection();
  for (const QItemSelectionRange& tramo : tramos) {
    for (int fila = tramo.top(); fila <= tramo.bottom(); ++fila) elegidas.push_back(fila);
  }
  std::ranges::sort(elegidas);
  QStringList textos;
  for (const int fila : elegidas) textos << modelo_->texto(fila);
  return textos.join(QLatin1Char('\n'));
}

QString lista_filas::copia_todas() const {
  QStringList textos;
  for (int fila = 0; fila < modelo_->rowCount(); ++fila) textos << modelo_->texto(fila);
  return textos.join(QLatin1Char('\n'));
}

std::vector<parte_realzada> lista_filas::partes(int fila) const {
  std::vector<parte_realzada> todas = modelo_->realces(fila);
  if (!senalado) return todas;
  const std::vector<parte_realzada> encima = senalado(static_cast<std::size_t>(fila));
  todas.insert(todas.end(), encima.begin(), encima.end());
  return todas;
}

lista_filas* lista_de(QWidget& ventana, const ListBox& lista) {
  return dynamic_cast<lista_filas*>(ventana.findChild<QListView*>(qt(lista.Name)));
}

void ir_a_fila(QWidget& ventana, const ListBox& lista, int fila) {
  if (lista_filas* vista = lista_de(ventana, lista)) vista->ir_a(fila);
}

void hacer(QWidget& padre, ListBox& origen, taller& t) {
  auto* destino = new lista_filas(padre, t.margen());
  destino->setFont(t.letra_qt(origen.Font, padre.font()));
  destino->setAccessibleName(nombre_accesible(t.titulo, {}, origen.Name));
  mantener(destino, origen, t);
  t.al_cambiar([destino, &origen] { destino->poner(origen.List); });
}

}  // namespace morvane
