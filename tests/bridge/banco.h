#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>

#include "bridge/placa.h"

namespace puente {

/// In literals '<' stands for STX and '>' for ETX.
inline std::string hilo(std::string texto) {
  std::ranges::replace(texto, '<', '\x02');
  std::ranges::replace(texto, '>', '\x03');
  return texto;
}

/// A board on a line without a pace, with its own chip.
struct banco {
  explicit banco(faltas f = {}, ritmo paso = {}) : p(c, paso, f) {}

  /// Sends `datos` as they stand and takes what is there afterwards.
  std::string crudo(std::string_view datos) {
    p.entra(datos, ahora);
    return p.sale(ahora);
  }
  std::string manda(const std::string& comando) { return crudo(en_trama(comando)); }
  /// Plays a script: commands with blanks between them, each with "=" and what its reply says if that is not "0".
  void recorre(const std::string& guion) {
    std::istringstream pasos(guion);
    for (std::string paso; pasos >> paso;) {
      const std::size_t igual = paso.find('=');
      const std::string contenido = igual == std::string::npos ? "0" : paso.substr(igual + 1);
      EXPECT_EQ(manda(paso.substr(0, igual)), en_trama(contenido)) << paso << " in " << guion;
    }
  }

  static std::string en_trama(const std::string& texto) { return "\x02" + texto + suma(texto) + "\x03"; }

  chip c;
  placa p;
  instante ahora{0};
};

inline const std::string bien = hilo("<030>");

}  // namespace puente
