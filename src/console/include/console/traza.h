#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "files/causa_archivo.h"
#include "job/entorno.h"

namespace morvane::console {

/// One line of a trace of the wire, without a line end: seconds with six places, the direction, '>' to the board or '<'
/// from it, and the characters as they were on the wire. STX and ETX read "<STX>" and "<ETX>"; others that do not
/// print, and "<" itself, "<hh>".
std::string renglon_de_traza(char direccion, std::string_view crudo, job::tiempo cuando);

/// A trace that is written line by line, each at once, so that a program that is killed leaves all but the last.
class traza {
 public:
  /// Empties or makes the file. `fallo` says why if that cannot be.
  explicit traza(const std::filesystem::path& ruta);
  /// Times count from that of the first line. After a failure nothing more is written.
  void anotar(char direccion, std::string_view crudo, job::tiempo cuando);
  const std::optional<causa_archivo>& fallo() const { return fallo_; }

 private:
  struct cerrar {
    void operator()(std::FILE* f) const { std::fclose(f); }
  };

  std::unique_ptr<std::FILE, cerrar> fichero_;
  std::optional<job::tiempo> inicio_;
  std::optional<causa_archivo> fallo_;
};

}  // namespace morvane::console
