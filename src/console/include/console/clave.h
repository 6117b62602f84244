#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>

#include "files/causa_archivo.h"

namespace morvane::console {

/// A key to sign with (Ed25519).
class clave {
 public:
  /// The key that follows from `semilla`.
  explicit clave(const std::array<std::uint8_t, 32>& semilla);
  clave(const clave&) = default;
  clave& operator=(const clave&) = default;
  /// Leaves nothing of it in memory.
  ~clave();

  /// The half that anybody may know: 64 hexadecimal digits in lower case.
  std::string publica() const;
  /// The signature of `texto`: 128 hexadecimal digits in lower case.
  std::string firma(std::string_view texto) const;
  /// True if `firma`, in the one form that there is of it, is that of `texto` by the key whose public half is
  /// `publica`.
  static bool comprobar(std::string_view texto, std::string_view firma, std::string_view publica);

 private:
  std::array<unsigned char, 32> publica_{};
  std::array<unsigned char, 64> secreta_{};
};

/// Why there is no key to sign with.
struct fallo_clave {
  enum class clase : std::uint8_t {
    /// This user has no folder for it.
    sin_carpeta,
    /// It cannot be read, or not be made: `archivo`.
    leer,
    escribir,
    /// What stands in the file is no key, or was changed.
    danada,
    /// It belongs to somebody else, or others may read it.
    ajena,
    abierta,
  };
  clase cual = clase::sin_carpeta;
  std::filesystem::path ruta{};
  causa_archivo archivo{};
};

/// The key in the folder `carpeta`, made at first use, folder and all, for this user alone to read. Where two programs
/// make it at once, both get the same. A file that is no whole key is never replaced.
std::variant<clave, fallo_clave> clave_guardada(const std::filesystem::path& carpeta);

/// The key that is there already, if it is whole and nobody else can read it. Makes none.
std::optional<clave> clave_que_hay(const std::filesystem::path& carpeta);

/// In Spanish, without capital and full stop, with the path of the file.
std::string frase(const fallo_clave& fallo);

}  // namespace morvane::console
