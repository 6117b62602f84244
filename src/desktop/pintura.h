#pragma once

#include <QColor>
#include <QFont>
#include <cstdint>

class QPalette;

namespace morvane {

/// The colours and fonts that the windows have in common beside those of the desktop's palette.

/// For a text that something is not as it is meant to be, on the background of `paleta`, light or dark.
QColor color_de_aviso(const QPalette& paleta);

/// True if `paleta` is a dark one.
bool es_oscura(const QPalette& paleta);

/// The colour `dado` (0xRRGGBB) where the desktop is light, and its counterpart where `escritorio` is dark: greys
/// become the surface of that desktop's own windows, other colours keep their hue.
QColor tono_de(std::uint32_t dado, const QPalette& escritorio);

/// A bit smaller than `normal`, for what stands beside it.
QFont letra_menor(const QFont& normal);

}  // namespace morvane
