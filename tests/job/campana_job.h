#pragma once

#include <cstdint>
#include <string>

namespace apoyo {

/// One job in a world that follows from `semilla`, with one fault or none. What is wrong with its claim; empty if
/// nothing is. `averia` is told what went wrong in that world, `fin` how the job ended.
struct mundo_juzgado {
  std::string averia, orden, error;
  int fin = 0;
  bool pasajera = false;
};
mundo_juzgado juzgar_mundo(std::uint64_t semilla);

}  // namespace apoyo
