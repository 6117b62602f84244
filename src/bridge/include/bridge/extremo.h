#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace puente {

using instante = std::chrono::microseconds;

/// The far end of a line, on a clock that its user gives and that never goes back.
class extremo {
 public:
  virtual ~extremo() = default;

  /// `datos` were put on the line towards it at `ahora`.
  virtual void entra(std::string_view datos, instante ahora) = 0;
  /// When something is due next, if anything is.
  virtual std::optional<instante> proximo() const = 0;
  /// Takes at most `cuantos` of the characters that have come from it by `ahora`.
  virtual std::string sale(instante ahora, std::size_t cuantos = SIZE_MAX) = 0;
  /// How many characters `entra` takes just now without losing one.
  virtual std::size_t hueco() const = 0;
  /// It has hung up; nothing works any more.
  virtual bool colgada() const = 0;
  /// The near end has opened the line.
  virtual void abierta(instante ahora) = 0;
};

}  // namespace puente
