#pragma once

#include <span>

#include "bridge/azar.h"
#include "bridge/chip.h"
#include "bridge/faltas.h"

namespace puente {

/// What a fault can do to the truth of what a program says that talks to the board. Whatever is not named here a good
/// program survives without a false word.
struct alcance {
  /// Characters come that answer nothing, or replies go wrong, which a program that takes them without looking for
  /// frames cannot tell from replies.
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

/// A kind of fault, of which the particulars are drawn by lot.
struct averia {
  /// In Spanish, as it is told to users.
  const char* nombre;
  alcance efecto;
  /// Adds one of this kind. `n` is the frame, from 1, that it happens to.
  void (*poner)(faltas& f, conducta& c, azar& a, std::uint64_t n);
};

/// Every kind.
std::span<const averia> averias();

/// Draws one of them for a board that starts now, and adds it.
const averia& averia_al_azar(faltas& f, conducta& c, azar& a);

}  // namespace puente
