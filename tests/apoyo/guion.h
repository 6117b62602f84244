#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "serial/transporte_memoria.h"

namespace apoyo {

using morvane::instante;
using namespace std::chrono_literals;

/// A far end that answers by script: the n-th frame that comes in gets the n-th answer, and none when they run out.
class guion final : public morvane::extremo {
 public:
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
  /// What is still to come will not.
  void callar() { cola_.clear(); }

  void recibir(std::string_view datos, instante ahora) override {
    // What stands between STX and the checksum is the command.
    for (std::size_t i; (i = datos.find('\x03')) != datos.npos; datos.remove_prefix(i + 1)) {
      comandos.emplace_back(datos.substr(1, i - 3));
      if (respuestas_.empty()) continue;
      poner(respuestas_.front().texto, ahora + respuestas_.front().tras, respuestas_.front().por_caracter);
      respuestas_.pop_front();
    }
  }
  std::string entregar(std::size_t cuantos, instante ahora) override {
    std::string texto;
    for (; texto.size() < cuantos && !cola_.empty() && cola_.front().cuando <= ahora; cola_.pop_front()) {
      texto += cola_.front().c;
    }
    return texto;
  }
  std::optional<instante> proximo() const override {
    return cola_.empty() ? std::nullopt : std::optional(cola_.front().cuando);
  }
  bool colgado() const override { return cuelga; }

  std::vector<std::string> comandos;
  bool cuelga = false;

 private:
  struct respuesta {
    std::string texto;
    instante tras, por_caracter;
  };
  struct caracter {
    char c;
    instante cuando;
  };
  std::deque<respuesta> respuestas_;
  std::deque<caracter> cola_;
};

}  // namespace apoyo
