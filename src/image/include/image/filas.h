#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "image/tramo.h"
#include "image/variables_grab.h"
#include "platform/controles.h"

namespace morvane {

/// Bytes in a row of a dump.
constexpr std::size_t bytes_por_fila = 16;

/// The rows of a hexadecimal dump from address 0: six digits of address, 16 bytes, their characters; 73 characters in
/// all. Erased bytes, those of value 0xFF, step back, and more so rows of which nothing is known.
class volcado : public filas {
 public:
  /// A remainder that fills no row is left out. `conocido` is what the bytes are known to be of; behind it and in front
  /// of it they only fill the place.
  explicit volcado(std::vector<std::uint8_t> bytes, tramo conocido = {0, total_celdas});

  std::size_t cuantas() const override { return bytes_.size() / bytes_por_fila; }
  std::string texto(std::size_t indice) const override;
  std::vector<parte_realzada> realces(std::size_t indice) const override;
  /// All that the rows show.
  std::span<const std::uint8_t> bytes() const { return bytes_; }
  /// The row in which what is known begins; 0 if there is none.
  std::size_t primera_conocida() const;

 private:
  std::vector<std::uint8_t> bytes_;
  tramo conocido_;
};

/// Where the bytes of `cual` stand in row `indice` of a dump, first as digits and then as characters; nothing if none
/// of them does.
std::vector<parte_realzada> partes_en_fila(tramo cual, std::size_t indice, realce como);

/// A dump of the first `cuantos` bytes of a buffer. Works on a copy of the bytes.
std::shared_ptr<const volcado> filas_de_volcado(const std::vector<std::uint8_t>& buffer, std::int64_t cuantos,
                                                tramo conocido = {0, total_celdas});

/// The rows of a comparison, a difference each.
class diferencias : public filas {
 public:
  /// The address of row `indice`, below `cuantas()`.
  virtual std::int32_t direccion(std::size_t indice) const = 0;
  /// The first row that is of what was read; 0 if there is none.
  virtual std::size_t primera_conocida() const = 0;
};

/// For each address from 0 to `tope` at which the two buffers differ, the address and both bytes, that of
/// `buffer_entrada` first. The digits that differ stand out, where the address lies in `leido`; the other rows step
/// back, since what was never read differs from nothing.
std::shared_ptr<const diferencias> filas_de_comparacion(const Variables_grab& v, std::int32_t tope,
                                                        tramo leido = {0, total_celdas});

}  // namespace morvane
