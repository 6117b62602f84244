#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace puente {

/// The microcontroller behind the bridge, as its EzPort shows it: 256 KiB of flash, a write-enable latch, a
/// configuration register, and a protection word.
class chip {
 public:
  static constexpr std::uint32_t tamano = 0x40000;

  enum class resultado { hecho, inactivo, protegido, sin_permiso, fuera };

  /// How many status readings an erase keeps the chip busy.
  int sondeos_de_borrado = 3;
  /// The erase ends with its error bit set and leaves the flash as it was.
  bool falla_borrado = false;
  /// The configuration register does not take its value.
  bool falla_config = false;
  /// The write-enable latch does not set.
  bool falla_permiso = false;
  /// The status always reads as 0xFF, as from an EzPort that is not active.
  bool mudo = false;

  chip();

  /// Opens and closes the EzPort. A protection word takes effect at the next opening.
  void abrir();
  void cerrar();
  bool abierto() const { return abierto_; }

  /// Each of these does nothing but report why when the chip does not take it.
  resultado permitir_escritura();
  resultado escribir_config(std::uint8_t valor);
  resultado borrar();
  /// Four bytes from `dir`, which must be a multiple of 4. Bits only go from 1 to 0. Uses up the write enable.
  resultado grabar(std::uint32_t dir, std::span<const std::uint8_t, 4> datos);
  resultado leer(std::uint32_t dir, std::span<std::uint8_t> destino) const;
  /// Back to the state after power-on; an erase in progress is cut off where it stands.
  void reiniciar();

  /// Status byte: 0x01 busy, 0x02 write enable, 0x20 configured, 0x40 erase failed, 0x80 protected. Counts as one poll
  /// of an erase in progress.
  std::uint8_t estado();

  std::span<std::uint8_t> flash() { return flash_; }
  std::span<const std::uint8_t> flash() const { return flash_; }

 private:
  bool palabra_de_proteccion() const;

  std::vector<std::uint8_t> flash_;
  int sondeos_ = 0;
  bool abierto_ = false, permiso_ = false, configurado_ = false, error_ = false, protegido_ = false;
};

}  // namespace puente
