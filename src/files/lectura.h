#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

namespace morvane {

/// A regular file held open for reading, which remembers what it was when it was opened. Errors are numbers as in
/// <cerrno>, 0 for none.
class lectura {
 public:
  lectura();
  ~lectura();
  lectura(const lectura&) = delete;
  lectura& operator=(const lectura&) = delete;

  /// Opens the file of the host's path `ruta`, in UTF-8, in place of the one before.
  int abrir(const std::string& ruta);
  bool abierta() const;
  void cerrar();
  /// Bytes that it had when it was opened; 0 if none ever was.
  std::uint64_t tamano() const;
  /// Up to `cuantos` bytes; 0 at the end, and negative after an error, which `error` then tells.
  std::int64_t leer(char* destino, std::size_t cuantos);
  int error() const;
  /// True if nobody has written to it since it was opened.
  bool sigue_igual() const;

 private:
  struct archivo;
  std::unique_ptr<archivo> a_;
};

}  // namespace morvane
