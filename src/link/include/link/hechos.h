#pragma once

#include <cstdint>

namespace morvane {

/// Why an operation was broken off.
enum class rotura : std::uint8_t {
  ninguna,
  /// The user has given up waiting.
  abandonada,
  /// The user wanted to go on where nothing came, which opens the chip anew.
  reanudada,
  /// The device has vanished.
  perdida,
  /// The sum of a reply is wrong.
  suma,
  /// What came is no reply to what was sent.
  ajena,
  /// The board or the chip has started anew.
  reset,
  /// Refusals, one after the other.
  rechazos,
  /// The program is asked to close.
  cierre,
};

/// What a box is about.
enum class asunto : std::uint8_t {
  ninguno,
  puerto_sin_numero,
  /// Another command of this program has the port.
  puerto_propio,
  /// `enlace::fallo_de_puerto` says why.
  puerto_cerrado,
  parametros,
  sin_respuesta,
  suma_mala,
  /// A status of FF.
  sin_chip,
  reset,
  /// `codigo` is the code.
  rechazo,
  interrumpida,
  sin_permiso_de_escritura,
  sin_configuracion,
  borrado_fallido,
  borrado_largo,
  borrada_entera,
  grabada,
  grabado_detenido,
  sin_diario,
  leida,
  lectura_detenida,
  /// The verdicts, on `desde` to below `hasta`: of the chip's own examination, of the sums (`debe` is that of the
  /// image, `hay` that of the chip), and byte by byte (likewise).
  en_blanco,
  con_datos,
  sumas_iguales,
  suma_distinta,
  bytes_iguales,
  byte_distinto,
  sin_proteger,
};

/// The facts behind a box that its own text does not tell. A face puts them into words.
struct hechos {
  asunto que = asunto::ninguno;
  char codigo = '\0';
  /// Addresses, as `que` has it.
  std::int32_t desde = 0, hasta = 0;
  std::uint32_t debe = 0, hay = 0;
};

}  // namespace morvane
