#pragma once

#include <span>

#include "azar.h"
#include "linea_mala.h"

namespace campana {

/// What one fault can do to the truth of what the program says. Whatever is not named here it must survive without a
/// false word.
struct alcance {
  /// Characters come that answer nothing, or replies go wrong, which modes without frames cannot tell from replies.
  bool ensucia = false;
  /// Characters of a reply are changed or lost.
  bool altera = false;
  /// A good frame comes that is not the reply to the last command.
  bool desplaza = false;
  /// Words are acknowledged and not written, or cells do not hold what is written.
  bool no_graba = false;
  /// The board takes its time but does nothing wrong.
  bool solo_tarda = false;
};

struct falta {
  const char* nombre;
  alcance efecto;
  /// Draws the particulars; `n` is the frame of the operation, from 1, that it happens to.
  void (*poner)(linea_mala&, azar&, std::uint64_t n);
};

/// Every kind of fault.
std::span<const falta> faltas();

}  // namespace campana
