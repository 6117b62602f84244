#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "files/causa_archivo.h"
#include "image/fallo_carga.h"
#include "image/tramo.h"
#include "image/variables_grab.h"

namespace morvane::console {

/// The kinds of firmware files.
enum class formato : std::uint8_t { s19, hex, elf, bin };

/// By the extension, in either case: .s19 .s28 .s37 .srec .mot, .hex, .elf .axf .out, .bin.
std::optional<formato> formato_de(const std::filesystem::path& ruta);

/// The biggest file that is read, in bytes.
constexpr std::uint64_t firmware_maximo = std::uint64_t{128} * 1024 * 1024;

/// Something in a file that an engineer wants to hear of, and that does not keep it from being loaded.
struct aviso {
  enum class clase : std::uint8_t {
    /// `cuantos` lines are no records and were passed over, `linea` the first of them.
    lineas_ajenas,
    /// There is no record that ends the file: its end may be missing.
    sin_final,
    /// Behind the record that ends the file, from `linea` on, stand `cuantos` more with data. Those of S-records were
    /// loaded, those of Intel HEX were not.
    tras_el_final,
    /// `cuantos` addresses were set twice, to different values; the first of them, `direccion`, again at `linea`.
    solapado,
    /// `cuantos` bytes that the file sets are something else in the image, from `direccion` on: a record whose data do
    /// not fill their last group of four is filled up with FF, over what stands there.
    pisado_por_relleno,
    /// `cuantos` bytes that S-records set in the configuration field, from `direccion` on, are 00 in the image.
    configuracion_a_cero,
    /// What is written as S-records has `cuantos` bytes in the configuration field, from `direccion` on, that will be
    /// 00 when it is loaded.
    configuracion_no_pasa,
    /// A segment of an ELF file begins with the header of the file itself, which goes to `direccion`.
    cabecera_de_elf,
    /// An ELF file for a processor of another kind, whose number is `cuantos`.
    otro_procesador,
  };
  clase cual = clase::sin_final;
  std::uint64_t linea = 0, cuantos = 0;
  std::int32_t direccion = 0;
  bool operator==(const aviso&) const = default;
};

/// Why a file cannot be loaded.
struct fallo_firmware {
  enum class clase : std::uint8_t {
    /// Its extension is of no known kind.
    formato_desconocido,
    /// The file itself: `archivo`.
    archivo,
    /// It has no data; `hay` lines of it are no records.
    sin_datos,
    /// What the window refuses too: `carga`.
    carga,
    /// A record with a character, the `hay`-th, that is no hexadecimal digit; one with a blank there, which nobody
    /// sees.
    cifra,
    blanco,
    /// A record that is too short to be one, or whose count says `debe` where `hay` bytes stand.
    corto,
    cuenta,
    /// The sum of a record is `hay` and should be `debe`.
    suma,
    /// A record says that `hay` records with data stand before it, and there are `debe`.
    registros,
    /// A record of Intel HEX of the unknown type `hay`, or one of a known type with `hay` bytes of data where it has
    /// `debe`.
    tipo,
    largo_de_tipo,
    /// The address `hay` is not one of the flash.
    fuera_de_memoria,
    /// No ELF file, or one that is cut off or damaged; one without segments to load, as an object file is.
    no_es_elf,
    elf_danado,
    sin_segmentos,
  };
  clase cual = clase::formato_desconocido;
  /// Counted from 1; 0 where it is the file as a whole.
  std::uint64_t linea = 0;
  std::uint64_t hay = 0, debe = 0;
  causa_archivo archivo{};
  fallo_carga carga{};
  bool operator==(const fallo_firmware&) const = default;
};

/// A file as it was loaded.
struct firmware {
  std::filesystem::path ruta;
  formato de = formato::s19;
  Variables_grab v;
  /// Of the file's bytes.
  std::string sha256_archivo;
  std::vector<aviso> avisos;
  /// With data.
  std::uint64_t registros = 0;
};

/// Reads a file. An S-record file gives the image that the window gives; the others give their bytes as they are.
/// Records are judged: sums, counts, digits. `en`: where the bytes of a .bin begin, within the flash.
std::variant<firmware, fallo_firmware> leer_firmware(const std::filesystem::path& ruta,
                                                     std::optional<std::int32_t> en = std::nullopt);

/// In Spanish, with the line where there is one; a sentence without capital and full stop.
std::string frase(const fallo_firmware& fallo);
std::string frase(const aviso& que);
/// One word for a program: "sin_final".
std::string_view nombre_de(aviso::clase cual);

}  // namespace morvane::console
