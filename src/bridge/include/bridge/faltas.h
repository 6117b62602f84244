#pragma once

#include <cstdint>

namespace puente {

/// What a board, or the line to it, does wrong. Frames count from 1, in the order in which the board receives them, and
/// so do the characters that it receives and those of its replies; 0 means never. Everything that is drawn by lot comes
/// from `semilla`, so a run can be repeated.
struct faltas {
  std::uint64_t semilla = 1;

  /// From this frame on no command is answered, and none is carried out.
  std::uint64_t muda_desde = 0;
  /// No reply to this frame alone; the command is carried out.
  std::uint64_t calla_en = 0;
  /// The reply to this frame stops after `cortada_tras` characters.
  std::uint64_t cortada_en = 0;
  unsigned cortada_tras = 0;
  /// The reply to this frame comes `retraso_ms` later than it should; with `retrasa_todas` every reply does.
  std::uint64_t retrasada_en = 0;
  bool retrasa_todas = false;
  unsigned retraso_ms = 0;
  /// The reply to this frame carries a wrong checksum, or one in lower-case letters.
  std::uint64_t suma_mala_en = 0;
  std::uint64_t suma_minuscula_en = 0;
  /// This frame is refused with this code character.
  std::uint64_t error_en = 0;
  char codigo_error = '6';
  /// The status that this frame asks for reads as FF, as from an EzPort that is not active.
  std::uint64_t inactiva_en = 0;
  /// From this frame on each frame comes back as it is, as from a plug that joins both directions, and none is carried
  /// out.
  std::uint64_t eco_desde = 0;
  /// This frame is answered by a RESET signal, and the chip starts anew; `reset_repetido` sends that many.
  std::uint64_t reset_en = 0;
  unsigned reset_repetido = 1;
  /// A RESET signal that answers no command, this long after this frame; the chip starts anew.
  std::uint64_t reset_suelto_en = 0;
  unsigned reset_suelto_ms = 0;
  /// The reply to this frame comes twice.
  std::uint64_t duplicada_en = 0;
  /// A good reply that nobody asked for comes with this frame; with `saluda` whenever the line is opened.
  std::uint64_t suelta_en = 0;
  bool saluda = false;
  /// Characters of noise in front of each reply and behind it, none of them STX or ETX.
  unsigned ruido = 0, ruido_detras = 0;
  /// The noise comes with the reply to this frame alone.
  std::uint64_t ruido_en = 0;
  /// From this frame on characters come without end, none of them STX and only with `balbuceo_etx` ETX, and no command
  /// is carried out. A line without a pace carries them as fast as one of 115,200 bits a second.
  std::uint64_t balbuceo_desde = 0;
  bool balbuceo_etx = false;
  /// Pause between the characters of every reply.
  unsigned goteo_ms = 0;
  /// Of each thousand words to program, how many are acknowledged and not written.
  unsigned por_mil_sin_grabar = 0;
  /// Shapes that no flow of the program's windows uses are refused as out of range: "e" with another count than 20 and
  /// 16, "C" over another range than a whole block, the first byte or the first 1,025.
  bool formas_fijas = false;
  /// "C" over as much as a block goes over the whole block that its address lies in; "C" over a short range begins at 0
  /// whatever its address; "e" gives 32 bytes where it is asked for more.
  bool bloques_enteros = false, cortos_desde_cero = false, lecturas_cortas = false;
  /// This character towards the program, or towards the board, arrives changed, or not at all.
  std::uint64_t altera = 0, pierde = 0, altera_ida = 0, pierde_ida = 0;
  /// The board loses its power for a moment just before it takes this frame.
  std::uint64_t rearranca_en = 0;
  /// The line is hung up when this frame has come in, and the board loses its power.
  std::uint64_t cuelga_en = 0;

  bool operator==(const faltas&) const = default;
};

}  // namespace puente
