#include "image/variables_grab.h"

#include <algorithm>

namespace morvane {

Variables_grab::Variables_grab()
    : buffer_salida(total_celdas), mascara_salida(total_celdas), buffer_entrada(total_celdas) {}

void poner_byte(Variables_grab& v, std::int32_t dir, std::uint8_t valor) {
  const auto celda = static_cast<std::size_t>(dir);
  v.buffer_salida[celda] = valor;
  v.mascara_salida[celda] = 1;
  v.dir_max = std::max(v.dir_max, dir);
}

void limpiar_buffer_salida(Variables_grab& v) {
  std::fill(v.buffer_salida.begin(), v.buffer_salida.end(), std::uint8_t{0xFF});
}

void limpiar_buffer_entrada(Variables_grab& v) {
  std::fill(v.buffer_entrada.begin(), v.buffer_entrada.end(), std::uint8_t{0});
}

}  // namespace morvane
