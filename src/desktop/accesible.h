#pragma once

#include <QAccessible>

class QWidget;

namespace morvane {

class mapa_qt;

/// These tell assistive technology what a widget is that is drawn by hand. To be called first of all: with the first
/// event about a widget Qt makes up its mind how to present it.
void dar_papel(QWidget& control, QAccessible::Role papel);
/// A map has the cell of its cursor as its value, and the count of all as its help.
void hacer_accesible(mapa_qt& mapa);

}  // namespace morvane
