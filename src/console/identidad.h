#pragma once

#include "job/plan.h"
#include "sesion.h"

namespace morvane::console {

/// Adds to an end what the chip holds instead, as far as that is known: nothing at all, or one of the known files.
void decir_que_hay(const llamada& ll, const job::resultado& r, cierre& c);

/// Tells the doubts of a plan, and lists them in the field "dudas".
void decir_dudas(const llamada& ll, const job::plan& p, json& datos);

}  // namespace morvane::console
