#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "cierre.h"
#include "console/argumentos.h"
#include "console/exterior.h"

namespace morvane::console {

/// A face of the program: told what goes on, tells it on. One object for one call.
class informe : public job::observador {
 public:
  /// An order begins.
  virtual void inicio(const argumentos& /*a*/) {}
  /// The line is open: `donde` says which one.
  virtual void linea(const json& /*donde*/) {}
  /// A doubt of class `clase`, said in the sentence `texto`, with its facts.
  virtual void duda(std::string_view clase, const std::string& texto, const json& hechos) = 0;
  /// The end of all. `orden` may be empty; `fin.datos` holds the common fields too.
  virtual void fin(std::string_view orden, int codigo, const cierre& fin) = 0;
};

/// Lines of JSON on standard output.
std::unique_ptr<informe> informe_json(exterior& fuera);
/// For a person. A quiet one tells failures alone.
std::unique_ptr<informe> informe_persona(exterior& fuera, bool callado);

std::string_view nombre_de(job::fase cual);
std::string_view nombre_de(job::suceso que);

}  // namespace morvane::console
