#include "job/diferencias.h"

#include <algorithm>
#include <optional>

namespace morvane::job {

namespace {

/// Differences of one kind that are no further apart are told as one.
constexpr std::int32_t hueco_unido = 16;
/// How far things are looked for that have moved, and how many bytes have to agree, not all of them alike.
constexpr std::int32_t corrimiento_maximo = 256, bytes_que_bastan = 12;

bool hay_erratas(const std::uint8_t* a, const std::uint8_t* b) {
  return !std::equal(a, a + bytes_por_palabra, b);
}

aspecto de_palabra(const std::uint8_t* debe, const std::uint8_t* hay) {
  bool era_ff = true, es_ff = true, faltan = false, sobran = false;
  for (std::int32_t i = 0; i < bytes_por_palabra; ++i) {
    era_ff = era_ff && debe[i] == 0xFF;
    es_ff = es_ff && hay[i] == 0xFF;
    faltan = faltan || (debe[i] & ~hay[i]) != 0;
    sobran = sobran || (hay[i] & ~debe[i]) != 0;
  }
  if (era_ff) return aspecto::no_borrado;
  if (es_ff) return aspecto::no_grabado;
  if (!sobran) return aspecto::bit_a_0;
  return faltan ? aspecto::otro : aspecto::bit_a_1;
}

class comparador {
 public:
  comparador(const objetivo& debe, std::span<const std::uint8_t> hay) : debe_(debe.bytes), hay_(hay) {}

  std::vector<diferencia> correr() {
    for (std::int32_t dir = 0; dir < chip.flash; dir += bytes_por_palabra) {
      if (hay_erratas(&debe_[at(dir)], &hay_[at(dir)])) anadir(dir);
    }
    unir_movidas();
    return std::move(lista_);
  }

 private:
  static std::size_t at(std::int32_t dir) { return static_cast<std::size_t>(dir); }

  bool difiere(std::int32_t dir) const { return debe_[at(dir)] != hay_[at(dir)]; }

  void anadir(std::int32_t dir) {
    const aspecto clase = de_palabra(&debe_[at(dir)], &hay_[at(dir)]);
    tramo t{dir, dir + bytes_por_palabra};
    while (!difiere(t.desde)) ++t.desde;
    while (!difiere(t.hasta - 1)) --t.hasta;
    if (!lista_.empty() && lista_.back().clase == clase && t.desde - lista_.back().donde.hasta <= hueco_unido) {
      lista_.back().donde.hasta = t.hasta;
    } else {
      lista_.push_back({t, clase});
    }
  }

  /// How far the contents of `t` have moved, if they have: what is there should stand at one distance, and what should
  /// be there says something.
  std::optional<std::int32_t> corrimiento(tramo t) const {
    if (t.largo() < bytes_que_bastan) return std::nullopt;
    const auto vale = [&](std::int32_t n) {
      for (std::int32_t dir = t.desde; dir < t.hasta; ++dir) {
        const std::int32_t de = dir - n;
        if ((de < 0 || de >= chip.flash ? 0xFF : debe_[at(de)]) != hay_[at(dir)]) return false;
      }
      return true;
    };
    const std::uint8_t primero = hay_[at(t.desde)];
    if (std::all_of(&hay_[at(t.desde)], &hay_[at(t.desde)] + t.largo(), [&](auto b) { return b == primero; })) {
      return std::nullopt;
    }
    for (std::int32_t n = 1; n <= corrimiento_maximo; ++n) {
      if (vale(n)) return n;
      if (vale(-n)) return -n;
    }
    return std::nullopt;
  }

  /// What has moved falls into words of all kinds: neighbours are tried as one.
  void unir_movidas() {
    std::vector<diferencia> unidas;
    for (std::size_t i = 0; i < lista_.size();) {
      std::size_t j = i + 1;
      while (j < lista_.size() && lista_[j].donde.desde - lista_[j - 1].donde.hasta <= hueco_unido) ++j;
      const tramo todo{lista_[i].donde.desde, lista_[j - 1].donde.hasta};
      if (const auto n = corrimiento(todo)) {
        unidas.push_back({todo, aspecto::movido, *n});
      } else {
        unidas.insert(unidas.end(), lista_.begin() + static_cast<std::ptrdiff_t>(i),
                      lista_.begin() + static_cast<std::ptrdiff_t>(j));
      }
      i = j;
    }
    lista_ = std::move(unidas);
  }

  const std::vector<std::uint8_t>& debe_;
  std::span<const std::uint8_t> hay_;
  std::vector<diferencia> lista_;
};

}  // namespace

std::vector<diferencia> comparar(const objetivo& debe, std::span<const std::uint8_t> hay) {
  return comparador(debe, hay).correr();
}

}  // namespace morvane::job
