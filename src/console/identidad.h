#pragma once

#include "imagenes.h"
#include "job/plan.h"
#include "sesion.h"

namespace morvane::console {

/// Adds to an end what the chip holds instead, as far as that is known: nothing at all, or one of the known files.
void decir_que_hay(const llamada& ll, const job::resultado& r, cierre& c);

/// The doubts about a file and of its plan: their class and a sentence each.
json dudas_en_json(const imagen_leida& i, const job::plan& p);

}  // namespace morvane::console
