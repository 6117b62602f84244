#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <array>

#include "flash/bloque.h"
#include "image/mapa_flash.h"

namespace morvane {

/// Where the parts of the map lie, in pixels of the screen, so that no edge falls between two of them: a row for each
/// block of 32 KiB, the addresses of its ends beside it, offsets above, the legend below.
class trazado_mapa {
 public:
  static constexpr int celdas_por_fila = chip.bloque / bytes_por_celda;
  static constexpr int filas = celdas_del_mapa / celdas_por_fila;
  /// Cells between two offsets above the rows, where the columns stand a little apart.
  static constexpr int celdas_por_grupo = 8;
  static constexpr int grupos = celdas_por_fila / celdas_por_grupo;

  /// `lugar` is all there is; `renglon` the height of a line of text, `rotulo` the width of an address.
  trazado_mapa(QSize lugar, int renglon, int rotulo);
  trazado_mapa() = default;

  QRect celda(int cual) const;
  QRect fila(int cual) const;
  QRect direccion(int fila, bool final) const;
  QRect desplazamiento(int grupo) const;
  QRect leyenda() const { return leyenda_; }
  /// The smallest rectangle around the cells that `t` touches, one for each row.
  QRect en_fila(int fila, tramo t) const;
  /// The cell at a point, or -1.
  int celda_en(QPoint punto) const;

 private:
  int x(int columna) const { return origen_.x() + columna * ancho_ + columna / celdas_por_grupo * hueco_; }

  QPoint origen_;
  int ancho_ = 0, alto_ = 0, paso_ = 0, hueco_ = 0, renglon_ = 0, rotulo_ = 0;
  QRect leyenda_;
};

}  // namespace morvane
