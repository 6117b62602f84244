#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "bridge/averias.h"
#include "image/mapa_flash.h"

namespace campana {

/// Judges the claims of the map of the flash, cell by cell, by the board's chip, the image and what went over the line.
/// A claim that is false and excused by what went wrong stays so until it is withdrawn.
class juez_mapa {
 public:
  juez_mapa(const morvane::mapa_flash& mapa, const morvane::Variables_grab& v, const puente::chip& chip)
      : mapa_(mapa), v_(v), chip_(chip), enviado_(morvane::total_flash, sin_enviar) {}

  /// The chip was exchanged, or something else than the program has changed it: what is false now is no fault.
  void chip_cambiado();
  /// An operation is over in which the program sent `escrito`. `limpio`: nothing went wrong that loses a word. Gives a
  /// line for each false claim.
  std::vector<std::string> terminar(std::string_view escrito, const puente::alcance& efecto, bool limpio);

 private:
  static constexpr int sin_enviar = -1;
  void anotar(std::string_view escrito);
  unsigned falsos(int celda) const;
  unsigned excusados(int celda, const puente::alcance& efecto) const;
  bool enviada(int celda) const;
  bool igual(int celda) const;

  const morvane::mapa_flash& mapa_;
  const morvane::Variables_grab& v_;
  const puente::chip& chip_;
  /// What the program sent to each address since the last erase.
  std::vector<int> enviado_;
  /// The board must have taken what the operation has written.
  bool escritura_limpia_ = false;
  std::array<unsigned, morvane::celdas_del_mapa> fiados_{};
};

}  // namespace campana
