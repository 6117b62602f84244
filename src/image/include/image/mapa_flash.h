#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "image/tramo.h"
#include "image/variables_grab.h"

namespace morvane {

/// Size of a cell of the map in bytes, and how many the flash has.
constexpr std::int32_t bytes_por_celda = 512;
constexpr int celdas_del_mapa = total_flash / bytes_por_celda;

/// The addresses of cell `celda`, 0 to 511.
constexpr tramo tramo_de_celda(int celda) {
  return {celda * bytes_por_celda, (celda + 1) * bytes_por_celda};
}

/// What can be known of a cell. `imagen` speaks of the image, all others of the chip.
enum class saber : unsigned {
  /// The image holds something other than 0xFF there.
  imagen = 1,
  /// The chip has reported it erased, and nothing was written there since.
  borrada = 2,
  /// This run of the program wrote there, out of the image that is loaded; what the chip made of it nobody has looked.
  escrita = 4,
  /// The same, but another image has been loaded since.
  escrita_antes = 8,
  /// `buffer_entrada` holds what the chip has there.
  leida = 16,
  /// The last verification found the part of the flash in which it lies equal to the image, or different from it.
  igual = 32,
  distinta = 64,
  /// This run wrote there, and a word was not confirmed.
  sin_confirmar = 128,
};

/// What this run of the program knows of the chip's flash, cell by cell. The flows report what they have done, at a
/// cost that a write loop does not notice; whoever shows the map looks at `cambios` from time to time. A cell of which
/// nothing is known has no fact at all. Addresses beyond the flash are passed over everywhere.
class mapa_flash {
 public:
  bool sabe(int celda, saber cual) const { return (celdas_[static_cast<std::size_t>(celda)] & bit(cual)) != 0; }
  /// True if nothing is known of what the chip holds there.
  bool ignora(int celda) const { return (celdas_[static_cast<std::size_t>(celda)] & ~bit(saber::imagen)) == 0; }
  /// What the last run wrote, and what the last read covered, as far as they are still known.
  tramo escrito() const { return escrito_; }
  tramo leido() const { return leido_; }
  /// Where the running flow is at work; empty when none is.
  tramo cabeza() const { return cabeza_; }
  /// Goes up with every change of the above that shows.
  unsigned long cambios() const { return cambios_; }

  /// Another image stands in `buffer_salida`: no verification holds any more, and what was written is of another image.
  void nueva_imagen(const std::vector<std::uint8_t>& buffer_salida);

  /// The whole chip is about to change, or may be another one: nothing is known of it any more.
  void olvidar_chip();
  /// The same for the cells that `donde` touches.
  void olvidar(tramo donde);
  /// The chip has reported all of `donde` erased, or not all of it.
  void borrado(tramo donde = {0, total_flash});
  void no_borrado(tramo donde);

  /// A run of writing begins at `dir`. Then `escribir` is told of each address, rising, before it is written, and
  /// `fin_de_escritura` of the first one that was not. `rota`: the reply to the last group never came, so the cell at
  /// the head is unknown.
  void empezar_escritura(std::int32_t dir);
  void escribir(std::int32_t dir) {
    if (dir >= borde_) pasar_a(dir);
  }
  void fin_de_escritura(std::int32_t dir, bool rota);
  /// What was written last was not confirmed.
  void sin_confirmacion();

  /// A read begins, for which `buffer_entrada` was cleared; `lectura` is told of each part that was stored, in order.
  void empezar_lectura();
  void lectura(tramo donde);

  /// What a flow looks at next.
  void examinar(tramo donde);
  /// A verification begins; `comparado` is told what it found. Equal are the cells that lie within `donde`, different
  /// those that it touches.
  void empezar_verificacion();
  void comparado(tramo donde, bool igual);

  /// No flow is at work any more.
  void reposar();

 private:
  static constexpr unsigned bit(saber cual) { return static_cast<unsigned>(cual); }
  void quitar(unsigned hechos);
  void poner(int celda, unsigned nuevos);
  void pasar_a(std::int32_t dir);
  void dejar_escrita();

  std::array<unsigned, celdas_del_mapa> celdas_{};
  tramo escrito_, leido_, cabeza_;
  /// First address that is not in the cell at the write head.
  std::int32_t borde_ = 0;
  unsigned long cambios_ = 0;
};

}  // namespace morvane
