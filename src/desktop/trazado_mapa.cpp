#include "desktop/trazado_mapa.h"

#include <algorithm>

namespace morvane {

trazado_mapa::trazado_mapa(QSize lugar, int renglon, int rotulo) : renglon_(renglon), rotulo_(rotulo) {
  const int margen = renglon / 2;
  hueco_ = std::max(1, renglon / 8);
  ancho_ = std::max(1, (lugar.width() - 2 * (margen + rotulo) - (grupos - 1) * hueco_) / celdas_por_fila);
  const int libre = lugar.height() - 2 * renglon - 2 * hueco_;
  paso_ = std::max(2, libre / filas);
  alto_ = std::max(1, paso_ - 2 * hueco_);
  const int rejilla = celdas_por_fila * ancho_ + (grupos - 1) * hueco_;
  origen_ = {(lugar.width() - rejilla) / 2, renglon + hueco_};
  leyenda_ = {margen, origen_.y() + filas * paso_, lugar.width() - 2 * margen, renglon};
}

QRect trazado_mapa::celda(int cual) const {
  const int columna = cual % celdas_por_fila;
  return {x(columna), origen_.y() + cual / celdas_por_fila * paso_, ancho_, alto_};
}

QRect trazado_mapa::fila(int cual) const {
  return celda(cual * celdas_por_fila).united(celda((cual + 1) * celdas_por_fila - 1));
}

QRect trazado_mapa::direccion(int cual, bool final) const {
  const QRect toda = fila(cual);
  const int izquierda = final ? toda.right() + 1 + hueco_ * 2 : toda.left() - hueco_ * 2 - rotulo_;
  return {izquierda, toda.center().y() - renglon_ / 2, rotulo_, renglon_};
}

QRect trazado_mapa::desplazamiento(int grupo) const {
  const int izquierda = x(grupo * celdas_por_grupo);
  return {izquierda, origen_.y() - renglon_ - hueco_ / 2, ancho_ * celdas_por_grupo, renglon_};
}

QRect trazado_mapa::en_fila(int cual, tramo t) const {
  const tramo suyo{std::max(t.desde, cual * chip.bloque), std::min(t.hasta, (cual + 1) * chip.bloque)};
  if (suyo.vacio()) return {};
  return celda(suyo.desde / bytes_por_celda).united(celda((suyo.hasta - 1) / bytes_por_celda));
}

int trazado_mapa::celda_en(QPoint punto) const {
  for (int i = 0; i < celdas_del_mapa; ++i) {
    if (celda(i).contains(punto)) return i;
  }
  return -1;
}

}  // namespace morvane
