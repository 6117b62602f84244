#pragma once

#include <string>

#include "image/mapa_flash.h"

/// The map of the flash as it is told to the user.
namespace morvane {

/// How a cell looks: the one of its facts about the chip that says most. What the image holds and what was read come
/// on top of it.
enum class aspecto { desconocida, borrada, escrita, escrita_antes, sin_confirmar, igual, distinta };
constexpr int aspectos = 7;

aspecto aspecto_de(const mapa_flash& mapa, int celda);

/// The name of an aspect in the legend.
const char* nombre_de(aspecto cual);

/// All that is known of a cell, 0 to 511: its addresses, then one fact a line.
std::string texto_de_celda(const mapa_flash& mapa, int celda);

/// How many cells look how, in one line.
std::string resumen_del_mapa(const mapa_flash& mapa);

}  // namespace morvane
