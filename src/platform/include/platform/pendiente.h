#pragma once

#include <optional>

#include "platform/reloj.h"

namespace morvane {

/// Something outside of the program that happens at moments of its own.
class pendiente {
 public:
  virtual ~pendiente() = default;
  /// When the next thing happens, if one will.
  virtual std::optional<instante> proximo() const = 0;
};

}  // namespace morvane
