#pragma once

#include <string>
#include <vector>

#include "bridge/adaptador.h"
#include "bridge/placa.h"
#include "serial/transporte_memoria.h"

namespace apoyo {

/// The simulated board at the far end of a line in memory. Notes every command that it takes.
class placa_lejos final : public morvane::extremo {
 public:
  explicit placa_lejos(unsigned baudios = 57600) : placa(chip, puente::ritmo{baudios}) {
    placa.traza = [this](char direccion, std::string_view trama, puente::instante) {
      if (direccion == '>' && trama.size() > 4) comandos.emplace_back(trama.substr(1, trama.size() - 4));
    };
  }

  void recibir(std::string_view datos, morvane::instante ahora) override { cable.entra(datos, ahora); }
  std::string entregar(std::size_t cuantos, morvane::instante ahora) override { return cable.sale(ahora, cuantos); }
  std::optional<morvane::instante> proximo() const override { return cable.proximo(); }
  bool colgado() const override { return placa.colgada(); }
  void abierta() override { placa.abierta({}); }

  /// Nothing is done wrong any more, and what was on its way is lost.
  void reparar() {
    placa.reparar();
    cable.vaciar();
  }

  /// The commands from the `desde`-th on, joined by blanks.
  std::string flujo(std::size_t desde = 0) const {
    std::string texto;
    for (std::size_t i = desde; i < comandos.size(); ++i) texto += (texto.empty() ? "" : " ") + comandos[i];
    return texto;
  }

  puente::chip chip;
  puente::placa placa;
  puente::adaptador cable{placa};
  std::vector<std::string> comandos;
};

}  // namespace apoyo
