#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace puente {

/// How a chip behaves.
struct conducta {
  /// How many status readings an erase keeps the chip busy.
  int sondeos_de_borrado = 3;
  /// If this is not 0, how long it does so instead, by the clock. Closing and opening do not cut such an erase off.
  std::chrono::microseconds borrado_dura{0};
  /// The erase ends with its error bit set and leaves the flash as it was.
  bool falla_borrado = false;
  /// The configuration register does not take its value.
  bool falla_config = false;
  /// The write-enable latch does not set.
  bool falla_permiso = false;
  /// The status always reads as 0xFF, as from an EzPort that is not active.
  bool mudo = false;
  /// Addresses of cells whose lowest bit never is 1, and never is 0.
  std::optional<std::uint32_t> celda_a_0{}, celda_a_1{};

  bool operator==(const conducta&) const = default;
};

/// The microcontroller behind the bridge, as its EzPort shows it: 256 KiB of flash, a write-enable latch, a
/// configuration register, and a protection word.
class chip {
 public:
  static constexpr std::uint32_t tamano = 0x40000;
  /// A flash that holds `palabra` at `dir_proteccion` is protected.
  static constexpr std::uint32_t dir_proteccion = 0x414;
  static constexpr std::array<std::uint8_t, 4> palabra{0xFF, 0xFF, 0x4A, 0xC8};

  /// `inactivo`: the EzPort is closed. `ocupado`: an erase is running. `sin_permiso`: the write enable, or for `grabar`
  /// and `borrar` the configuration, is missing. `fuera`: no place of the flash.
  enum class resultado { hecho, inactivo, ocupado, protegido, sin_permiso, fuera };

  conducta modo;

  chip();

  /// It is `ahora` on a clock that never goes back, by which an erase gets on that goes by the clock. To be told before
  /// each command.
  void pasa(std::chrono::microseconds ahora);

  /// Opens and closes the EzPort. Opening starts the chip anew, as `reiniciar` does, but for an erase that goes by the
  /// clock; a protection word takes effect then.
  void abrir();
  void cerrar();
  bool abierto() const { return abierto_; }
  /// An erase that goes by the clock was in progress when the time was last told.
  bool sigue_borrando() const { return borra_desde_.has_value(); }

  /// Each of these does nothing but report why when the chip does not take it. The three that write use up the write
  /// enable.
  resultado permitir_escritura();
  resultado escribir_config(std::uint8_t valor);
  /// Starts the erase of the whole flash, which goes on from low to high addresses with each status reading, or by the
  /// clock. Protection ends at once, unless the erase is one that fails.
  resultado borrar();
  /// Four bytes from `dir`, which must be a multiple of 4. Bits only go from 1 to 0.
  resultado grabar(std::uint32_t dir, std::span<const std::uint8_t, 4> datos);
  /// Cells that do not exist read as 0xFF.
  resultado leer(std::uint32_t dir, std::span<std::uint8_t> destino) const;
  /// Back to the state after power-on, with the EzPort closed; an erase in progress is cut off where it stands.
  void reiniciar();

  /// Status byte: 0x01 busy, 0x02 write enable, 0x20 configured, 0x40 erase failed, 0x80 protected. Counts as one poll
  /// of an erase in progress.
  std::uint8_t estado();

  /// Goes up whenever a command has changed the flash.
  std::uint64_t cambios() const { return cambios_; }

  std::span<std::uint8_t> flash() { return flash_; }
  std::span<const std::uint8_t> flash() const { return flash_; }

 private:
  bool palabra_de_proteccion() const;
  resultado impedimento() const;
  bool borrando() const { return sondeos_ > 0 || sigue_borrando(); }
  void avanzar_borrado();
  /// So much of `total` is done.
  void seguir_borrado(std::int64_t hecho, std::int64_t total);
  /// To be called after each change of the flash.
  void pegar_celdas();

  std::vector<std::uint8_t> flash_;
  std::uint64_t cambios_ = 0;
  /// Status readings that the erase in progress takes in all, and how many are still to come.
  int sondeos_totales_ = 0, sondeos_ = 0;
  /// When the erase began that goes by the clock, if one is in progress, and how long it takes.
  std::optional<std::chrono::microseconds> borra_desde_;
  std::chrono::microseconds dura_{0}, ahora_{0};
  bool borrado_fallido_ = false;
  bool abierto_ = false, permiso_ = false, configurado_ = false, error_ = false, protegido_ = false;
};

}  // namespace puente
