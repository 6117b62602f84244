#pragma once

#include <QFont>
#include <QWidget>
#include <array>
#include <functional>

#include "desktop/trazado_mapa.h"
#include "image/mapa_flash.h"
#include "shell/texto_mapa.h"

namespace morvane {

/// The flash at a glance. A cell that changes is drawn anew alone. The arrow keys, Home and End move a cursor over the
/// cells, whose state is told beside it; Enter or a double click opens a cell.
class mapa_qt final : public QWidget {
 public:
  /// `mapa` must outlive it.
  mapa_qt(QWidget* padre, const mapa_flash& mapa);

  /// Draws what has changed since the last call; cheap when nothing has.
  void poner_al_dia();
  /// The cell of the cursor, and its text.
  int cursor_celda() const { return cursor_; }
  void mover_cursor(int celda);
  QString texto_del_cursor() const;
  /// What the whole map shows, in one line.
  QString resumen() const;

  /// Called with the first address of the cell that the user wants to look into.
  std::function<void(std::int32_t dir)> al_abrir;

 protected:
  bool event(QEvent* suceso) override;
  void paintEvent(QPaintEvent* suceso) override;
  void resizeEvent(QResizeEvent* suceso) override;
  void keyPressEvent(QKeyEvent* tecla) override;
  void mousePressEvent(QMouseEvent* raton) override;
  void mouseDoubleClickEvent(QMouseEvent* raton) override;
  void focusInEvent(QFocusEvent* suceso) override;
  void focusOutEvent(QFocusEvent* suceso) override;

 private:
  /// What a cell is drawn from.
  using estampa = unsigned;
  estampa estampa_de(int celda) const;
  int celda_en(QPointF punto) const;
  /// A rectangle of the layout in the widget's own points, with room for what is drawn around it.
  QRect en_puntos(const QRect& pixeles) const;
  void contar(int celda);
  void abrir(int celda);
  void trazar();
  void pintar(QPainter& pintor, int celda) const;
  void pintar_bloque(QPainter& pintor, int fila) const;
  void pintar_direcciones(QPainter& pintor, int fila) const;
  void pintar_desplazamiento(QPainter& pintor, int grupo) const;
  void pintar_muestra(QPainter& pintor, const QRect& sitio, aspecto como, bool imagen, bool lectura, bool cabeza) const;
  void pintar_leyenda(QPainter& pintor) const;

  const mapa_flash& mapa_;
  trazado_mapa trazado_;
  QFont letra_;
  /// Pixels of the screen to a point, and to a fine line.
  double densidad_ = 1;
  int trazo_ = 1;
  int cursor_ = 0;
  unsigned long vistos_ = 0;
  std::array<estampa, celdas_del_mapa> dibujadas_{};
  /// The head as it was drawn last.
  tramo cabeza_;
};

}  // namespace morvane
