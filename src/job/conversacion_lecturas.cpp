// What is read of the chip: sums, marks and bytes.

#include <algorithm>
#include <array>
#include <utility>

#include "cifras.h"
#include "files/texto.h"
#include "image/chip.h"
#include "job/conversacion.h"

namespace morvane::job {

namespace {

/// Bytes of a reading: the most that a reply holds, and the two numbers that every board takes.
constexpr std::size_t lectura_mayor = 127;
constexpr std::int32_t lectura_fija = 32, otra_lectura_fija = 22;

/// Fills `destino` from its front as far as there are pairs of digits. Gives how many bytes that were.
std::size_t poner_bytes(std::string_view cifras, std::span<std::uint8_t> destino) {
  const std::size_t n = std::min(cifras.size() / 2, destino.size());
  for (std::size_t i = 0; i < n; ++i) {
    destino[i] = static_cast<std::uint8_t>(digito_hex(cifras[2 * i]) << 4 | digito_hex(cifras[2 * i + 1]));
  }
  return n;
}

}  // namespace

std::optional<examen> conversacion::leer_examen(const contestacion& c, std::int32_t cuantos) {
  if (!c.buena()) return std::nullopt;
  // Behind the code: where the sum's eight digits stand, and in front of them, of a block, the two of the mark.
  const bool larga = cuantos == ventana_larga;
  const std::string_view suma = c.datos.substr(larga ? 34 : 3, 8);
  const std::string_view marca = larga ? c.datos.substr(32, 2) : std::string_view("00");
  if (!son_cifras(suma) || !son_cifras(marca)) return std::nullopt;
  return examen{valor_hex(suma), marca == "FF"};
}

std::optional<examen> conversacion::examinar(std::int32_t dir, std::int32_t cuantos) {
  const mandato m = job::examinar(dir, cuantos);
  for (int veces = 1; puede_seguir() && preparar(); ++veces) {
    contestacion c = pedir(m);
    if (const auto e = leer_examen(c, cuantos)) return e;
    if (c.buena()) c = {clase::extrana};
    if (!puede_repetir(m, c, veces, dir)) break;
  }
  return std::nullopt;
}

void conversacion::abandonar_forma() {
  if (std::exchange(forma_libre_, false)) contar(suceso::forma_abandonada, "C");
}

std::optional<examen> conversacion::examinar_donde_sea(std::int32_t dir, std::int32_t cuantos) {
  if (!puede_seguir() || !preparar()) return std::nullopt;
  const mandato m = job::examinar(dir, cuantos);
  const contestacion c = pedir(m);
  if (const auto e = leer_examen(c, cuantos)) return e;
  if (!dudar(m, c)) return std::nullopt;
  if (c.buena() || c.que == clase::rechazada || c.que == clase::extrana) abandonar_forma();
  return std::nullopt;
}

/// What the next reading for up to `quedan` bytes from `dir` asks for.
tramo conversacion::proxima_lectura(std::int32_t dir, std::size_t quedan) {
  if (!lectura_larga_) {
    // Only whole ones, and none past the end.
    ultima_lectura_ = ultima_lectura_ == lectura_fija ? otra_lectura_fija : lectura_fija;
    const std::int32_t desde = std::min(dir, chip.flash - ultima_lectura_);
    return {desde, desde + ultima_lectura_};
  }
  auto n = static_cast<std::int32_t>(std::min(quedan, lectura_mayor));
  if (n == ultima_lectura_ && n > 1) --n;
  ultima_lectura_ = n;
  return {dir, dir + n};
}

/// Gives how many bytes it has read; nothing if the talk has failed.
std::optional<std::size_t> conversacion::leer_trozo(std::int32_t dir, std::span<std::uint8_t> destino) {
  for (int veces = 1; termina_palabra_ || puede_seguir(); ++veces) {
    const tramo t = proxima_lectura(dir, destino.size());
    const mandato m = job::leer(t.desde, t.largo());
    contestacion c = pedir(m);
    if (c.buena() && !son_cifras(c.datos)) c = {clase::extrana};
    if (c.buena()) return poner_bytes(c.datos.substr(2 * static_cast<std::size_t>(dir - t.desde)), destino);
    const bool no_la_toma = c.que == clase::rechazada || c.que == clase::extrana;
    if (!puede_repetir(m, c, veces, dir)) {
      // Whoever begins anew shall not fail at the same place.
      if (no_la_toma) lectura_larga_ = false;
      break;
    }
    // In all, not in a row: the next one is shorter, and may be taken just for that.
    if (no_la_toma && ++lecturas_rehusadas_ >= 2 && std::exchange(lectura_larga_, false)) {
      contar(suceso::forma_abandonada, "e");
      veces = 0;
    }
  }
  return std::nullopt;
}

bool conversacion::leer(std::int32_t dir, std::span<std::uint8_t> destino) {
  while (!destino.empty()) {
    const auto n = leer_trozo(dir, destino);
    if (!n) return false;
    dir += static_cast<std::int32_t>(*n);
    destino = destino.subspan(*n);
  }
  return true;
}

std::optional<std::uint32_t> conversacion::leer_palabra(std::int32_t dir) {
  std::array<std::uint8_t, 4> b;
  termina_palabra_ = true;
  const bool leida = leer(dir, b);
  termina_palabra_ = false;
  if (!leida) return std::nullopt;
  return std::uint32_t{b[0]} << 24 | std::uint32_t{b[1]} << 16 | std::uint32_t{b[2]} << 8 | b[3];
}

}  // namespace morvane::job
