#pragma once

#include <memory>

#include "serial/transporte.h"

namespace morvane {

/// The settings of an open terminal for as long as it is a line of this program.
class ajuste_tty {
 public:
  ajuste_tty();
  ~ajuste_tty();
  ajuste_tty(const ajuste_tty&) = delete;
  ajuste_tty& operator=(const ajuste_tty&) = delete;

  /// Makes it a raw line without flow control: any speed, no drop of DTR when it is closed, characters handed over as
  /// they come where the driver has that. False if the driver does not take the parameters as they stand; what was
  /// found is put back then.
  bool poner(int fd, const parametros_linea& linea);

  /// Puts back what `poner` found, but for the drop of DTR, after what the circuit still sends and without waiting for
  /// what has not got there. What somebody else has set since is left alone. Nothing happens without a `poner` before.
  void reponer(int fd);

 private:
  struct estado;
  std::unique_ptr<estado> e_;
};

}  // namespace morvane
