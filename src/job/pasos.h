#pragma once

#include <functional>

#include "job/conversacion.h"
#include "job/objetivo.h"
#include "job/puesto.h"
#include "job/resultado.h"

/// What several orders are made of. Each that gives False has noted why in the talk.
namespace morvane::job {

/// An order from the opening of the chip to its closing.
resultado con_chip(const puesto& p, const std::function<void(conversacion&, resultado&)>& trabajo);

/// Brings the flash to where it is proven blank, and erases only if it is not. `a_fondo`: after an erase all blocks are
/// looked at, not only those that were not known blank before.
bool dejar_en_blanco(conversacion& c, resultado& r, bool a_fondo);

/// Asks whether the flash holds `que`, and puts what it has found into `r`. `iguales` is what comes out.
bool probar(conversacion& c, const objetivo& que, prueba como, resultado& r, bool& iguales);

/// Reads `donde` into `destino`, which is as long.
bool leer_tramo(conversacion& c, tramo donde, std::span<std::uint8_t> destino);

}  // namespace morvane::job
