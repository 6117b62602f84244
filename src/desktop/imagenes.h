#pragma once

#include <QIcon>
#include <QRectF>
#include <string>

class QPainter;

namespace morvane {

/// The image `nombre` of the program, sharp at all sizes that a desktop asks for; an empty icon for an empty name.
QIcon imagen(const std::string& nombre);

/// Draws the image `nombre` as large as fits, in the middle of `sitio`; nothing where there is none of that name.
void dibujar(const std::string& nombre, QPainter& pintor, const QRectF& sitio);

}  // namespace morvane
