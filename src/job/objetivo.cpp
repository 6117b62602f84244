#include "job/objetivo.h"

#include <algorithm>
#include <numeric>

#include "files/texto.h"

namespace morvane::job {

namespace {

constexpr std::int32_t hacia_abajo(std::int32_t dir) {
  return dir - dir % bytes_por_palabra;
}

}  // namespace

std::uint32_t palabra_de_proteccion() {
  return valor_hex(chip.valor_proteccion);
}

firma firma::en_blanco() {
  firma f{.principio = 0xFF * ventana_corta};
  f.bloques.fill(0xFF * ventana_larga);
  return f;
}

objetivo::objetivo() : bytes(static_cast<std::size_t>(chip.flash), std::uint8_t{0xFF}) {}

objetivo::objetivo(const Variables_grab& v) : objetivo() {
  const auto fin_marcas = v.mascara_salida.begin() + v.dir_max + 1;
  const auto primera = std::find_if(v.mascara_salida.begin(), fin_marcas, [](std::uint8_t m) { return m != 0; });
  if (primera == fin_marcas) return;
  const auto desde = hacia_abajo(static_cast<std::int32_t>(primera - v.mascara_salida.begin()));
  escrito = {std::min(desde, chip.flash), std::min(hacia_abajo(v.dir_max) + bytes_por_palabra, chip.flash)};
  std::copy_n(v.buffer_salida.begin() + escrito.desde, escrito.largo(), bytes.begin() + escrito.desde);
}

std::uint32_t objetivo::palabra(std::int32_t dir) const {
  const std::uint8_t* b = bytes.data() + dir;
  return std::uint32_t{b[0]} << 24 | std::uint32_t{b[1]} << 16 | std::uint32_t{b[2]} << 8 | b[3];
}

std::uint32_t objetivo::suma(tramo donde) const {
  return std::accumulate(bytes.begin() + donde.desde, bytes.begin() + donde.hasta, std::uint32_t{0});
}

firma objetivo::sumas() const {
  firma f{.principio = suma({0, ventana_corta})};
  for (int i = 0; i < bloques_de_flash; ++i) {
    f.bloques[static_cast<std::size_t>(i)] = suma({i * ventana_larga, (i + 1) * ventana_larga});
  }
  return f;
}

bool objetivo::protege() const {
  return palabra(chip.palabra_proteccion.desde) == palabra_de_proteccion();
}

}  // namespace morvane::job
