#pragma once

#include <cstdint>

namespace morvane {

/// Why a file of the user's cannot be read or written. A fact that a class does not name is 0.
struct causa_archivo {
  enum class clase : std::uint8_t {
    ninguna,
    no_existe,
    sin_permiso,
    /// A folder, a pipe, a device.
    no_es_normal,
    nombre_largo,
    enlaces_en_circulo,
    /// The disk has failed.
    disco,
    /// Writing alone: there is no room left on the disk, or nothing may be written on it.
    lleno,
    solo_lectura,
    /// It was written to while it was read.
    ha_cambiado,
    /// Of more than `limite` bytes.
    demasiado_grande,
    /// The host's number `error`.
    sistema,
  };
  clase cual = clase::ninguna;
  int error = 0;
  std::uint64_t limite = 0;
  bool operator==(const causa_archivo&) const = default;
};

/// What the number `error`, as in <cerrno>, says of a file that could not be opened or read.
causa_archivo causa_de_lectura(int error);
/// The same of a file that could not be written; `no_existe` is its folder.
causa_archivo causa_de_escritura(int error);

}  // namespace morvane
