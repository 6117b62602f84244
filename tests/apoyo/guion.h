#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "platform/transporte_memoria.h"

namespace apoyo {

using morvane::instante;
using namespace std::chrono_literals;

/// A far end that answers by script: the n-th frame that comes in gets the n-th answer, and none when they run out.
class guion final : public morvane::extremo {
 public:
  struct respuesta {
    std::string texto;
    instante tras{1ms};
    instante por_caracter{0};
  };

  void contestar(std::string texto, instante tras = 1ms, instante por_caracter = instante{0}) {
    respuestas_.push_back({std::move(texto), tras, por_caracter});
  }
  /// Puts characters on the line by themselves.
  void poner(std::string_view texto, instante cuando, instante por_caracter = instante{0}) {
    for (const char c : texto) {
      cola_.push_back({c, cuando});
      cuando += por_caracter;
    }
  }

  void recibir(std::string_view datos, instante ahora) override {
    for (const char c : datos) {
      if (c != '\x03') {
        if (c != '\x02') trama_ += c;
        continue;
      }
      // What stands between STX and the checksum is the command.
      comandos.push_back(trama_.substr(0, trama_.size() - 2));
      trama_.clear();
      if (respuestas_.empty()) continue;
      const respuesta r = respuestas_.front();
      respuestas_.pop_front();
      poner(r.texto, ahora + r.tras, r.por_caracter);
    }
  }
  std::string entregar(std::size_t cuantos, instante ahora) override {
    std::string texto;
    while (texto.size() < cuantos && !cola_.empty() && cola_.front().cuando <= ahora) {
      texto += cola_.front().c;
      cola_.pop_front();
    }
    if (balbuceo != 0 && ahora >= empieza_balbuceo) {
      while (texto.size() < std::min<std::size_t>(cuantos, 40)) texto += balbuceo;
    }
    return texto;
  }
  std::optional<instante> proximo() const override {
    if (cola_.empty()) return balbuceo == 0 ? std::nullopt : std::optional(empieza_balbuceo);
    return cola_.front().cuando;
  }
  bool colgado() const override { return cuelga; }

  std::vector<std::string> comandos;
  bool cuelga = false;
  /// A character that comes without end, 40 in every read, from `empieza_balbuceo` on.
  char balbuceo = 0;
  instante empieza_balbuceo{0};

 private:
  struct caracter {
    char c;
    instante cuando;
  };
  std::deque<respuesta> respuestas_;
  std::deque<caracter> cola_;
  std::string trama_;
};

}  // namespace apoyo
