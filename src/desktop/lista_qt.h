#pragma once

#include <QListView>
#include <functional>
#include <memory>
#include <vector>

#include "platform/controles.h"

class QLabel;

namespace morvane {

class modelo_filas;

/// A list of rows whose texts are made when it shows them. The user may choose several at a time.
class lista_filas final : public QListView {
 public:
  /// `margen`: pixels from the left edge to the text, where the headings have theirs.
  lista_filas(QWidget& padre, int margen);

  void poner(std::shared_ptr<const filas> nuevas);

  /// The chosen rows, or all of them, in their order, one a line.
  QString copia_elegidas() const;
  QString copia_todas() const;

  /// Makes row `fila` the current one, and the only one that is chosen, whatever keys are held down meanwhile.
  void elegir(int fila);

  /// The same, and brings it to the top; the last one where there are fewer rows. Nothing happens to an empty list.
  void ir_a(int fila);

  /// Keeps so many pixels along the lower edge free of rows, for what stands in front of them there. What does not hold
  /// a whole row stays free as well.
  void reservar(int alto);
  /// The pixels that are free of rows now.
  int libre_abajo() const { return viewportMargins().bottom(); }
  /// What stands in the place of the rows where there are none.
  void decir_vacia(const QString& texto);

  /// What of a row stands out, what `senalado` adds to it included.
  std::vector<parte_realzada> partes(int fila) const;
  std::function<std::vector<parte_realzada>(std::size_t fila)> senalado;

 protected:
  void resizeEvent(QResizeEvent* suceso) override;

 private:
  void asentar(int valor);

  modelo_filas* modelo_;
  QLabel* vacia_;
  int reservado_ = 0;
  /// The height of a row; 0 where there are none.
  int fila_ = 0;
};

/// The list that shows `lista` in a window, or null.
lista_filas* lista_de(QWidget& ventana, const ListBox& lista);

/// Brings row `fila`, from 0, of the list that shows `lista` in `ventana` to the top and chooses it; the last row where
/// there are fewer. Nothing happens to an empty list.
void ir_a_fila(QWidget& ventana, const ListBox& lista, int fila);

}  // namespace morvane
