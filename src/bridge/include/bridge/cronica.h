#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "bridge/extremo.h"

namespace puente {

/// What passes at the near end of a line, put together to the lines of a trace: each up to an ETX, or as far as it came
/// before something else happened. What was changed or lost on the way stands there as it arrived.
class cronica {
 public:
  /// `direccion` is '>' for what went to the board, '<' for what came from it, '!' for what happened to the line:
  /// "abre" or "cuelga". `cuando` is its last character's time.
  using testigo = std::function<void(char direccion, std::string_view crudo, instante cuando)>;

  explicit cronica(testigo a) : testigo_(std::move(a)) {}

  void va(std::string_view datos, instante ahora) { pasar('>', datos, ahora); }
  void viene(std::string_view datos, instante ahora) { pasar('<', datos, ahora); }
  void sucede(std::string_view que, instante ahora);
  /// Tells what has no ETX yet.
  void acabar();

 private:
  void pasar(char direccion, std::string_view datos, instante ahora);

  testigo testigo_;
  char direccion_ = '\0';
  std::string crudo_;
  instante ultimo_{0};
};

}  // namespace puente
