#pragma once

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <string_view>

#include "bridge/placa.h"

namespace puente {

/// A board on a line without a pace, with its own chip.
struct banco {
  explicit banco(faltas f = {}, ritmo paso = {}) : p(c, paso, f) {}

  /// Sends `crudo` as it stands and takes what is there afterwards.
  std::string crudo(std::string_view datos) {
    p.entra(datos, ahora);
    return p.sale(ahora);
  }
  /// Frames and sends a command.
  std::string manda(const std::string& comando) { return crudo(en_trama(comando)); }
  void prepara(std::initializer_list<const char*> comandos) {
    for (const char* comando : comandos) manda(comando);
  }
  /// Opens the chip and leaves it configured, write-enabled.
  void habilita() { prepara({"A", "a", "d2E", "a"}); }

  static std::string en_trama(const std::string& texto) {
    unsigned s = 0;
    for (const char k : texto) s += static_cast<unsigned char>(k);
    char digitos[3];
    std::snprintf(digitos, sizeof digitos, "%02X", s % 256);
    return "\x02" + texto + digitos + "\x03";
  }

  chip c;
  placa p;
  instante ahora{0};
};

/// In literals '<' stands for STX and '>' for ETX.
inline std::string hilo(std::string texto) {
  std::replace(texto.begin(), texto.end(), '<', '\x02');
  std::replace(texto.begin(), texto.end(), '>', '\x03');
  return texto;
}

inline const std::string bien = hilo("<030>");

}  // namespace puente
