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
/// all. Erased bytes, those of value 0xFF, step back.
class volcado : public filas {
 public:
  /// A remainder that fills no row is left out.
  explicit volcado(std::vector<std::uint8_t> bytes);

  std::size_t cuantas() const override { return bytes_.size() / bytes_por_fila; }
  std::string texto(std::size_t indice) const override;
  std::vector<parte_realzada> realces(std::size_t indice) const override;
  /// All that the rows show.
  std::span<const std::uint8_t> bytes() const { return bytes_; }

 private:
  std::vector<std::uint8_t> bytes_;
};

/// Where the bytes of `cual` stand in row `indice` of a dump, first as digits and then as characters; nothing if none
/// of them does.
std::vector<parte_realzada> partes_en_fila(tramo cual, std::size_t indice, realce como);

/// A dump of the first `cuantos` bytes of a buffer. Works on a copy of the bytes.
std::shared_ptr<const volcado> filas_de_volcado(const std::vector<std::uint8_t>& buffer, std::int64_t cuantos);

/// The rows of a comparison: for each address from 0 to `tope` at which the two buffers differ, the address and both
/// bytes, that of `buffer_entrada` first. The digits that differ stand out.
std::shared_ptr<const filas> filas_de_comparacion(const Variables_grab& v, std::int32_t tope);

}  // namespace morvane
