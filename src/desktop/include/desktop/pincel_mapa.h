#pragma once

#include <QColor>
#include <QRect>

#include "shell/texto_mapa.h"

class QPainter;

/// How the cells of the map are drawn. Each aspect has a colour and a pattern or mark of its own, the same on a light
/// surface as on a dark one.
namespace morvane {

/// Colours that people with any kind of colour blindness tell apart.
struct tinte {
  QColor fondo, trazo;
};
tinte tinte_de(aspecto cual);

/// The colour of what goes on top of cells: bars, borders.
inline constexpr QRgb tinta_mapa = 0xFF202020;

/// Draws a cell into `sitio`, in pixels of the screen, of which a fine line takes `trazo`. `con_imagen` puts a bar
/// along the lower edge, `con_lectura` one along the upper edge.
void pintar_celda(QPainter& pintor, const QRect& sitio, int trazo, aspecto cual, bool con_imagen, bool con_lectura);

/// Draws a frame of two lines around `sitio`, a dark one outside and one in `tono`, to be seen on light and dark.
void enmarcar(QPainter& pintor, const QRect& sitio, int trazo, const QColor& tono);

}  // namespace morvane
