#include "image/informe_carga.h"

#include <algorithm>
#include <cctype>
#include <numeric>

#include "cifras_hex.h"
#include "files/texto.h"
#include "image/chip.h"

namespace morvane {

namespace {

constexpr std::size_t cifras_de_tipo = 2;
/// So many hexadecimal digits and nothing else are hardly words.
constexpr std::size_t cifras_de_datos = 8;

bool es_cifra(char c) {
  return cifra(c) >= 0;
}

/// A header, a count or an end record, which bring no data.
bool es_de_servicio(std::string_view linea) {
  return linea.size() >= cifras_de_tipo && linea[0] == 'S' && std::isdigit(static_cast<unsigned char>(linea[1])) != 0;
}

bool parece_datos(std::string_view linea) {
  const bool s = linea.size() > cifras_de_tipo && (linea[0] == 'S' || linea[0] == 's') && linea[1] >= '1' &&
                 linea[1] <= '3' && es_cifra(linea[2]);
  const bool dos_puntos = linea.size() > cifras_de_tipo && linea[0] == ':' && es_cifra(linea[1]);
  return s || dos_puntos || (linea.size() >= cifras_de_datos && std::ranges::all_of(linea, es_cifra));
}

/// True if `octetos`, the digits of a record behind its type, are those of bytes of which the first counts the others
/// and the last makes the sum come out.
bool cuadra(std::string_view octetos) {
  unsigned suma = 0;
  int ajena = 0;
  for (std::size_t i = 0; i + 1 < octetos.size(); i += 2) {
    const int alta = cifra(octetos[i]), baja = cifra(octetos[i + 1]);
    ajena |= alta | baja;
    suma += static_cast<unsigned>(alta * 16 + baja);
  }
  if (octetos.size() % 2 != 0 || ajena < 0 || (suma & 0xFFU) != 0xFFU) return false;
  return cifra(octetos[0]) * 16 + cifra(octetos[1]) == static_cast<int>(octetos.size() / 2) - 1;
}

}  // namespace

std::int64_t informe_carga::ocupados() const {
  return std::accumulate(tramos.begin(), tramos.end(), std::int64_t{0},
                         [](std::int64_t suma, tramo t) { return suma + t.largo(); });
}

tramo informe_carga::entre() const {
  return tramos.empty() ? tramo{} : tramo{tramos.front().desde, tramos.back().hasta};
}

void informe_carga::anotar_ajena(std::string_view linea, std::uint64_t numero) {
  const std::string_view sin = sin_blancos(linea);
  if (sin.empty() || es_de_servicio(linea)) return;
  ++ajenas;
  if (!parece_datos(sin)) return;
  if (parecidas++ == 0) primera_parecida = numero;
}

void informe_carga::anotar_registro(std::string_view linea, std::uint8_t ancho_dir, std::uint64_t numero) {
  ++registros;
  if (!cuadra(linea.substr(cifras_de_tipo)) && malas++ == 0) primera_mala = numero;
  const std::size_t antes = cifras_de_tipo + 2 + ancho_dir, suma = 2;
  const auto cuantos = static_cast<std::int32_t>((linea.size() - antes - suma) / 2);
  const auto desde = static_cast<std::int32_t>(valor_hex(linea.substr(cifras_de_tipo + 2, ancho_dir)));
  bytes += static_cast<std::uint64_t>(cuantos);
  anotar_tramo({desde, desde + cuantos});
  const tramo perdido{std::max(desde, chip.configuracion.desde), std::min(desde + cuantos, chip.configuracion.hasta)};
  for (std::int32_t dir = perdido.desde; dir < perdido.hasta; ++dir) {
    const std::size_t donde = antes + 2 * static_cast<std::size_t>(dir - desde);
    if (valor_hex(linea.substr(donde, 2)) != 0) ++retirados;
  }
}

void informe_carga::anotar_tramo(tramo donde) {
  if (donde.vacio() || (!tramos.empty() && tramos.back().contiene(donde))) return;
  if (!tramos.empty() && tramos.back().hasta == donde.desde) {
    tramos.back().hasta = donde.hasta;
    return;
  }
  // Records mostly rise; what lies before the last one finds its place, and takes in what it touches.
  auto cual = std::ranges::lower_bound(tramos, donde.desde, {}, &tramo::hasta);
  auto fin = cual;
  for (; fin != tramos.end() && fin->desde <= donde.hasta; ++fin) {
    donde = {std::min(donde.desde, fin->desde), std::max(donde.hasta, fin->hasta)};
  }
  tramos.insert(tramos.erase(cual, fin), donde);
}

}  // namespace morvane
