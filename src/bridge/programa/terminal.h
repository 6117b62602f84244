#pragma once

#include <string>
#include <string_view>

#include "descriptor.h"

namespace puente {

/// The board's end of a new pseudo-terminal. Nothing here waits.
class terminal {
 public:
  /// Raw and without echo. Throws std::system_error.
  terminal();

  /// The device that programs open.
  const std::string& nombre() const { return nombre_; }
  /// For poll: characters have come in; a program has opened or closed its end.
  int fd() const { return *maestro_; }
  int fd_avisos() const { return *vigia_; }

  /// What is there, at most `cuantos` characters.
  std::string leer(std::size_t cuantos);
  /// Characters that the terminal has no more room for are lost, as on a line that nobody listens to.
  void escribir(std::string_view datos);
  /// To be called when `fd_avisos` is readable. True if a program has opened its end. Gives up what one that closed has
  /// taken for itself: the kernel only does so when nobody at all holds the device, and the board always does.
  bool atender_avisos();

 private:
  descriptor maestro_, esclavo_, vigia_;
  std::string nombre_;
};

}  // namespace puente
