#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "job/desenlace.h"
#include "serial/adaptador.h"

namespace morvane::console {

using json = nlohmann::ordered_json;

/// How an order ended, for whoever reads it.
struct cierre {
  job::desenlace que = job::desenlace::hecho;
  /// One Spanish sentence.
  std::string texto;
  /// What else a person reads, line by line, and what there is to do, if anything.
  std::vector<std::string> detalle{};
  std::string remedio{};
  /// The fields of the result that belong to this order.
  json datos = json::object();

  bool bien() const { return que == job::desenlace::hecho; }
};

/// What an adapter says of itself, as results and certificates tell it.
json adaptador_en_json(const adaptador& a);

/// The name of an end, as programs read it.
std::string_view nombre_de(job::desenlace que);
/// The exit code of an end; `senal` is the signal that asked for a stop, if any.
int codigo_de(job::desenlace que, int senal);

/// An order could not go on: an end to be told as it stands.
struct fracaso {
  cierre fin;
};
/// Ends the order with `que`.
[[noreturn]] void fracasar(job::desenlace que, std::string texto, std::string remedio = {});

}  // namespace morvane::console
