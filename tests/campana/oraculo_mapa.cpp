#include "oraculo_mapa.h"

#include <algorithm>
#include <numeric>

#include "files/texto.h"

namespace campana {

using namespace morvane;

namespace {

template <class Bytes>
std::uint64_t suma(const Bytes& bytes, tramo t) {
  return std::accumulate(bytes.begin() + t.desde, bytes.begin() + t.hasta, std::uint64_t{0});
}

bool tiene(std::string_view escrito, char orden) {
  const char trama[] = {'\x02', orden};
  return escrito.find(std::string_view(trama, 2)) != std::string_view::npos;
}

}  // namespace

/// Which cells words have gone out for, and whether what the verification by sums found is of this operation.
void oraculo_mapa::anotar(std::string_view escrito) {
  for (std::size_t i = 0; (i = escrito.find("\x02g", i)) != std::string_view::npos; ++i) {
    const std::uint32_t dir = valor_hex(escrito.substr(i + 2, 6));
    if (dir < static_cast<std::uint32_t>(total_flash)) enviadas_.set(dir / bytes_por_celda);
  }
  const bool por_sumas = escrito.find(
                             "\x02"
                             "C000000000400") != std::string_view::npos;
  recien_verificado_ = por_sumas && !tiene(escrito, 'g') && !tiene(escrito, 'i');
}

bool oraculo_mapa::verificada(tramo donde, bool igual) const {
  const auto mismas = [this](tramo t) { return suma(lejos_.chip.flash(), t) == suma(f_.v.buffer_salida, t); };
  const std::int32_t bloque = donde.desde / chip.bloque * chip.bloque;
  const bool iguales = mismas({bloque, bloque + chip.bloque});
  if (igual) return iguales;
  return !iguales || !mismas({0, chip.configuracion.desde + 1});
}

bool oraculo_mapa::leida(tramo donde) const {
  const std::int32_t desde = std::max(donde.desde, f_.progreso.mapa.leido().desde);
  const std::int32_t hasta = std::min(donde.hasta, f_.progreso.mapa.leido().hasta);
  const auto flash = lejos_.chip.flash();
  return hasta > desde && std::equal(flash.begin() + desde, flash.begin() + hasta, f_.v.buffer_entrada.begin() + desde);
}

std::string oraculo_mapa::falsa(int celda) const {
  const mapa_flash& m = f_.progreso.mapa;
  const tramo donde = tramo_de_celda(celda);
  const auto bytes = lejos_.chip.flash().subspan(static_cast<std::size_t>(donde.desde), bytes_por_celda);
  if (m.sabe(celda, hecho::borrada) && !std::ranges::all_of(bytes, [](auto b) { return b == 0xFF; })) return "erased";
  const bool escrita = m.sabe(celda, hecho::escrita) || m.sabe(celda, hecho::escrita_antes);
  if (escrita && !enviadas_.test(static_cast<std::size_t>(celda))) return "written";
  if (m.sabe(celda, hecho::leida) && !leida(donde)) return "read";
  for (const bool igual : {true, false}) {
    if (!recien_verificado_ || !m.sabe(celda, igual ? hecho::igual : hecho::distinta)) continue;
    if (!verificada(donde, igual)) return igual ? "equal" : "different";
  }
  return {};
}

std::string oraculo_mapa::juzgar(std::string_view escrito, const puente::alcance& efecto) {
  const mapa_flash& m = f_.progreso.mapa;
  anotar(escrito);
  // An erase begins with a map that knows nothing.
  if (tiene(escrito, 'i')) dudoso_ = false;
  dudoso_ = dudoso_ || efecto.altera || efecto.desplaza || efecto.no_graba;
  bool alguna = false;
  for (int i = 0; i < celdas_del_mapa; ++i) {
    if (m.ignora(i)) continue;
    alguna = true;
    if (dudoso_) break;
    ++juzgadas;
    if (const std::string que = falsa(i); !que.empty()) return "the map calls cell " + std::to_string(i) + " " + que;
  }
  if (!alguna) dudoso_ = false;
  return {};
}

}  // namespace campana
