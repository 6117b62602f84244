#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "console/firmware.h"

/// What the readers of the kinds of files share.
namespace morvane::console {

/// What a file says of each address, and what it says twice.
class dicho_por_archivo {
 public:
  dicho_por_archivo() : valores_(static_cast<std::size_t>(total_celdas), nada) {}

  /// `dir` must be the address of a cell.
  void poner(std::int32_t dir, std::uint8_t valor, std::uint64_t linea);
  bool dice(std::int32_t dir) const { return valores_[static_cast<std::size_t>(dir)] != nada; }
  std::uint8_t valor(std::int32_t dir) const {
    return static_cast<std::uint8_t>(valores_[static_cast<std::size_t>(dir)]);
  }
  /// The doubt about addresses that were set twice to different values, if there are any.
  std::optional<aviso> solapado() const;

 private:
  static constexpr std::int16_t nada = -1;

  std::vector<std::int16_t> valores_;
  aviso choque_{.cual = aviso::clase::solapado};
};

/// A file that is being read.
struct lectura_firmware {
  firmware& f;
  std::string_view contenido;
  dicho_por_archivo dicho{};
};

using fin_de_lectura = std::optional<fallo_firmware>;

fin_de_lectura leer_s19(lectura_firmware& l);
fin_de_lectura leer_hex(lectura_firmware& l);
fin_de_lectura leer_elf(lectura_firmware& l);
/// Exact bytes from `desde` on, within the flash.
fin_de_lectura leer_bin(lectura_firmware& l, std::int32_t desde);

/// Bytes of a file as they are: what is said, and the image. Fails beyond the flash.
fin_de_lectura poner_bytes(lectura_firmware& l, std::uint64_t dir, std::string_view bytes, std::uint64_t linea);

/// The bytes of the hexadecimal digits in `linea` behind its first `tras` characters. Fails at a character that is no
/// digit and at half a byte.
fin_de_lectura octetos_de(std::string_view linea, std::size_t tras, std::vector<std::uint8_t>& destino);

/// Counts a line that is no record.
void contar_ajena(firmware& f, std::uint64_t linea);
/// Nothing stands in it: blank, or the old mark of the end of a text.
bool es_blanca(std::string_view linea);

}  // namespace morvane::console
