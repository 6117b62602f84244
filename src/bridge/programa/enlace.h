#pragma once

#include <filesystem>
#include <string>

#include "descriptor.h"

namespace puente {

/// A symbolic link to the board's terminal, there for as long as this object lives.
class enlace {
 public:
  /// Replaces a link that leads nowhere or to a pseudo-terminal that no board stands behind any more, in one step, so
  /// that the link never lacks. Missing directories are made. Throws std::runtime_error with a Spanish text, having
  /// changed nothing, if another board holds the link, if it leads to a device of another kind, or if something that is
  /// no link stands there.
  enlace(const std::filesystem::path& ruta, std::string destino);
  /// Removes the link if it is still this board's own.
  ~enlace();
  enlace(const enlace&) = delete;
  enlace& operator=(const enlace&) = delete;

 private:
  std::filesystem::path ruta_;
  std::string destino_;
  descriptor cerrojo_;
};

}  // namespace puente
