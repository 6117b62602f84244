#include "juez_mapa.h"

#include <algorithm>
#include <numeric>

#include "files/texto.h"
#include "flash/bloque.h"
#include "shell/texto_mapa.h"

namespace campana {

namespace {

using namespace morvane;

constexpr unsigned bit(saber cual) {
  return static_cast<unsigned>(cual);
}

auto parte(const auto& bytes, tramo t) {
  return std::span(bytes).subspan(static_cast<std::size_t>(t.desde), static_cast<std::size_t>(t.hasta - t.desde));
}

bool vacia(std::span<const std::uint8_t> celda) {
  static const std::vector<std::uint8_t> borrada(bytes_por_celda, 0xFF);
  return std::ranges::equal(celda, borrada);
}

tramo comun(tramo a, tramo b) {
  const std::int32_t desde = std::max(a.desde, b.desde);
  return {desde, std::max(desde, std::min(a.hasta, b.hasta))};
}

/// The part of the flash whose sum the verification asks for.
tramo bloque_de(int celda) {
  const std::int32_t desde = tramo_de_celda(celda).desde / chip.bloque * chip.bloque;
  return {desde, desde + chip.bloque};
}

std::uint64_t suma(std::span<const std::uint8_t> bytes) {
  return std::accumulate(bytes.begin(), bytes.end(), std::uint64_t{0});
}

}  // namespace

void juez_mapa::chip_cambiado() {
  for (int i = 0; i < celdas_del_mapa; ++i) fiados_.at(static_cast<std::size_t>(i)) |= falsos(i);
}

std::vector<std::string> juez_mapa::terminar(std::string_view escrito, const puente::alcance& efecto, bool limpio) {
  anotar(escrito);
  // The word of the protection is sent without an erase.
  escritura_limpia_ = limpio && escrito.find("\x02i") != escrito.npos;
  std::vector<std::string> mentiras;
  if (!mapa_.cabeza().vacio()) mentiras.emplace_back("something is at work on the map");
  for (int i = 0; i < celdas_del_mapa; ++i) {
    const unsigned mal = falsos(i);
    unsigned& fiado = fiados_.at(static_cast<std::size_t>(i));
    if ((mal & ~fiado & ~excusados(i, efecto)) != 0)
      mentiras.push_back("false on the map: " + texto_de_celda(mapa_, i));
    fiado = mal;
  }
  return mentiras;
}

/// An erase begins with a map that knows nothing, so nothing is excused by what was before.
void juez_mapa::anotar(std::string_view escrito) {
  for (std::size_t i = 0; (i = escrito.find('\x02', i)) != escrito.npos; ++i) {
    if (escrito[i + 1] == 'i') {
      std::ranges::fill(enviado_, sin_enviar);
      fiados_ = {};
    }
    if (escrito[i + 1] != 'g') continue;
    const auto dir = static_cast<std::size_t>(valor_hex(escrito.substr(i + 2, 6)));
    for (std::size_t k = 0; k < 4 && dir + k < enviado_.size(); ++k) {
      enviado_[dir + k] = static_cast<int>(valor_hex(escrito.substr(i + 8 + 2 * k, 2)));
    }
  }
}

unsigned juez_mapa::falsos(int celda) const {
  const tramo t = tramo_de_celda(celda), leida = comun(t, mapa_.leido());
  const auto sabe = [&](saber cual) { return mapa_.sabe(celda, cual); };
  const auto flash = chip_.flash();
  unsigned mal = 0;
  if (sabe(saber::imagen) == vacia(parte(v_.buffer_salida, t))) mal |= bit(saber::imagen);
  if (sabe(saber::borrada) && !vacia(parte(flash, t))) mal |= bit(saber::borrada);
  if (sabe(saber::escrita) && !enviada(celda)) mal |= bit(saber::escrita);
  if (sabe(saber::escrita_antes) && std::ranges::count(parte(enviado_, t), sin_enviar) == bytes_por_celda) {
    mal |= bit(saber::escrita_antes);
  }
  const bool buena = !leida.vacio() && std::ranges::equal(parte(flash, leida), parte(v_.buffer_entrada, leida));
  if (sabe(saber::leida) && !buena) mal |= bit(saber::leida);
  if (sabe(saber::igual) && !igual(celda)) mal |= bit(saber::igual);
  if (sabe(saber::distinta) &&
      std::ranges::equal(parte(flash, bloque_de(celda)), parte(v_.buffer_salida, bloque_de(celda)))) {
    mal |= bit(saber::distinta);
  }
  return mal;
}

/// What a chip with a stuck bit makes of its cell, and of the sums of its block, and what changed characters and
/// replies to something else can do where the program looks neither at code nor at checksum. Nothing excuses a word
/// that was not sent.
unsigned juez_mapa::excusados(int celda, const puente::alcance& efecto) const {
  const auto cerca = [&](const auto& dir, std::int32_t trozo) {
    return dir && static_cast<std::int32_t>(*dir) / trozo == celda * bytes_por_celda / trozo;
  };
  const auto pegada = [&](std::int32_t trozo) {
    return cerca(chip_.modo.celda_a_0, trozo) || cerca(chip_.modo.celda_a_1, trozo);
  };
  const unsigned sumados = bit(saber::igual) | bit(saber::distinta), vistos = bit(saber::borrada) | sumados;
  if (efecto.desplaza || pegada(bytes_por_celda)) return vistos | bit(saber::leida);
  if (pegada(chip.bloque)) return efecto.altera ? vistos : sumados;
  return efecto.altera ? vistos : 0;
}

/// The image has gone out there, and where the board must have taken it the chip holds it.
bool juez_mapa::enviada(int celda) const {
  const tramo t = comun(tramo_de_celda(celda), mapa_.escrito());
  const auto imagen = parte(v_.buffer_salida, t);
  if (t.vacio() || !std::ranges::equal(parte(enviado_, t), imagen)) return false;
  return !escritura_limpia_ || std::ranges::equal(parte(chip_.flash(), t), imagen);
}

/// Byte for byte, or as far as the sum of its block tells.
bool juez_mapa::igual(int celda) const {
  const auto flash = chip_.flash();
  const tramo t = tramo_de_celda(celda), bloque = bloque_de(celda);
  return std::ranges::equal(parte(flash, t), parte(v_.buffer_salida, t)) ||
         suma(parte(flash, bloque)) == suma(parte(v_.buffer_salida, bloque));
}

}  // namespace campana
