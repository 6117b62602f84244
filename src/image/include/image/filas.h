#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "image/variables_grab.h"
#include "platform/controles.h"

namespace morvane {

/// Bytes in a row of a dump.
constexpr std::size_t bytes_por_fila = 16;

/// The rows of a hexadecimal dump of `cuantos` bytes of a buffer from address 0: six digits of address, 16 bytes, their
/// characters; 73 characters in all. A remainder that fills no row is left out. Works on a copy of the bytes.
std::shared_ptr<const filas> filas_de_volcado(const std::vector<std::uint8_t>& buffer, std::int64_t cuantos);

/// The rows of a comparison: for each address from 0 to `tope` at which the two buffers differ, the address and both
/// bytes, that of `buffer_entrada` first.
std::shared_ptr<const filas> filas_de_comparacion(const Variables_grab& v, std::int32_t tope);

}  // namespace morvane
