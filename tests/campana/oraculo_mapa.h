#pragma once

#include <bitset>
#include <string>
#include <string_view>

#include "apoyo/placa_lejos.h"
#include "bridge/averias.h"
#include "shell/frm_principal.h"

namespace campana {

/// Judges the map of the main window: no cell claims more of the chip than what is so.
class oraculo_mapa {
 public:
  oraculo_mapa(morvane::frm_principal& f, const apoyo::placa_lejos& lejos) : f_(f), lejos_(lejos) {}

  /// Somebody has changed the chip behind the program's back.
  void cambio_ajeno() { dudoso_ = true; }
  /// Looks at all cells when an operation is over, `escrito` being what it sent. Gives what is false, or an empty text.
  /// What was learnt while replies could be forged is not judged, until the map has begun anew.
  std::string juzgar(std::string_view escrito, const puente::alcance& efecto);

  /// Claims judged so far.
  std::uint64_t juzgadas = 0;

 private:
  void anotar(std::string_view escrito);
  std::string falsa(int celda) const;
  bool verificada(morvane::tramo donde, bool igual) const;
  bool leida(morvane::tramo donde) const;

  morvane::frm_principal& f_;
  const apoyo::placa_lejos& lejos_;
  bool dudoso_ = false, recien_verificado_ = false;
  std::bitset<morvane::celdas_del_mapa> enviadas_;
};

}  // namespace campana
