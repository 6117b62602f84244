#pragma once

#include <cstdint>
#include <optional>
#include <string>

/// One board, one job, by proof.
namespace morvane::job {

/// How an order ended. The values are exit codes, one meaning each; those that this room never gives are the face's.
enum class desenlace {
  /// Done and proved; for a verification, equal.
  hecho = 0,
  interno = 1,
  uso = 2,
  /// There is nothing to program in the image.
  archivo = 3,
  puerto = 4,
  /// The board does not answer.
  silencio = 5,
  /// The line is broken: noise that does not end, replies that are none, device gone.
  linea = 6,
  /// Board or chip refuses a command, time after time.
  rechazada = 7,
  /// The chip is protected, and the order does not lift that.
  protegida = 8,
  /// The chip holds something else.
  distinta = 9,
  /// The erase failed or took too long, or a word did not take.
  chip = 10,
  certificado = 11,
  /// Stopped on demand. Which signal it was, 130 or 143, the face knows.
  detenido = 130,
};

/// Why, more closely.
enum class motivo {
  ninguno,
  /// silencio: nothing came at all; or other commands are answered, and this one is not.
  sin_respuesta,
  comando_sin_respuesta,
  /// linea: characters came without a frame around them, and did not end; a reply did not; a wrong sum; two replies
  /// for one; a frame that is no reply to this command; RESET after RESET; doubt after doubt in one stretch of work.
  ruido,
  respuesta_incompleta,
  suma_mala,
  respuesta_doble,
  respuesta_extrana,
  resets,
  sin_sosiego,
  dispositivo_perdido,
  /// rechazada: `codigo` says which; or the status reads as FF, so that the chip does not answer the board.
  codigo,
  chip_mudo,
  /// chip: the status never showed the write enable, the configuration; the erase said that it failed, did not end, or
  /// left cells unerased; a word holds neither what was written nor FFFFFFFF; a word was acknowledged and not written.
  sin_permiso,
  sin_configuracion,
  borrado_fallido,
  borrado_largo,
  borrado_incompleto,
  palabra_extrana,
  palabra_no_grabada,
  /// distinta: sums or bytes differ; the place of the protection word is taken by something else.
  contenido,
  /// chip: the protection word is written, and the chip does not report itself protected.
  sin_proteccion,
};

/// An end, with its facts as far as there are any.
struct fin {
  desenlace que = desenlace::hecho;
  motivo por = motivo::ninguno;
  /// The command that it ended at, as it stands in its frame.
  std::string comando{};
  /// The first address that it is about.
  std::optional<std::int32_t> direccion{};
  /// The digit of a refusal, '1' to '9', else 0.
  char codigo = '\0';
  /// How often the last command had been sent.
  int veces = 0;
  bool bien() const { return que == desenlace::hecho; }
};

}  // namespace morvane::job
