#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "files/causa_archivo.h"

namespace morvane {

/// Reads a file of the user's as lines of text, in bounded memory. Paths are the host's own and are not translated.
/// Only regular files of up to `tamano_maximo` are read: opening a pipe or a device fails instead of waiting. A file
/// that changes meanwhile is an error, since what was read of it may be half of this and half of that.
class lector_lineas {
 public:
  enum class finales {
    /// A line ends at CR or at CR LF.
    cr,
    /// Each of CR, LF and CR LF ends a line, whatever else the file has. A UTF-8 mark at its start is passed over.
    todos,
  };
  /// Characters of a line that are kept; a longer line is reported with its true length.
  static constexpr std::size_t maximo = 1024;
  /// In bytes.
  static constexpr std::uint64_t tamano_maximo = std::uint64_t{128} * 1024 * 1024;

  struct linea {
    /// The line without its end, cut after `maximo` bytes.
    std::string_view texto;
    /// Its full length in bytes.
    std::uint64_t largo = 0;
  };

  lector_lineas();
  ~lector_lineas();
  lector_lineas(const lector_lineas&) = delete;
  lector_lineas& operator=(const lector_lineas&) = delete;

  /// False if the file cannot be read; `causa` then says why.
  bool abrir(const std::string& ruta, finales como);
  /// Size in bytes when it was opened.
  std::uint64_t tamano() const;
  /// The next line; the view holds until the next call. False at the end of the file and after a read error.
  bool siguiente(linea& destino);
  /// True if reading failed (and not just ended).
  bool fallo() const;
  /// Why it failed; of no class if it did not.
  const causa_archivo& causa() const;

 private:
  struct estado;
  std::unique_ptr<estado> e_;
};

}  // namespace morvane
