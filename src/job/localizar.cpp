#include "job/localizar.h"

#include <algorithm>
#include <cstdlib>

namespace morvane::job {

namespace {

/// Ranges up to this long are read: another window would cost as much.
constexpr std::int32_t largo_de_hoja = 32;
/// What windows may cost for each block that differs, in characters. More than that is won back by no reading saved.
constexpr std::int64_t gasto_por_bloque = 1'500;
constexpr tramo principio{0, ventana_corta};

constexpr tramo bloque(int i) {
  return {i * ventana_larga, (i + 1) * ventana_larga};
}

/// A range whose sum is off by so much.
struct sospecha {
  tramo donde;
  std::int64_t de_mas = 0;
};

/// Narrows down where sums are off. Each range in doubt is split by a window that has one end in it, and all other
/// ranges in doubt whole on one side.
class buscador {
 public:
  buscador(conversacion& c, const objetivo& debe, const firma& suya)
      : c_(c), debe_(debe), suya_(suya), dudas_(c.dudas()) {}

  /// False if the talk has failed.
  bool correr(std::vector<std::uint8_t>& hay) {
    sospechar();
    gasto_ = c_.gastos().caracteres() + gasto_por_bloque * static_cast<std::int64_t>(dudosos_);
    while (c_.forma_libre() && c_.dudas() == dudas_ && c_.gastos().caracteres() < gasto_ && partir_una()) {
    }
    if (!c_.por_que().bien()) return false;
    // After a doubt all of this is done once more.
    return c_.dudas() != dudas_ || leer_sospechas(hay);
  }

 private:
  void sospechar() {
    const firma nuestra = debe_.sumas();
    abiertas_.clear();
    dudosos_ = 0;
    for (int i = 0; i < bloques_de_flash; ++i) {
      const auto k = static_cast<std::size_t>(i);
      const std::int64_t de_mas = std::int64_t{suya_.bloques[k]} - nuestra.bloques[k];
      const std::int64_t delante = std::int64_t{suya_.principio} - nuestra.principio;
      dudosos_ += de_mas != 0 || (i == 0 && delante != 0) ? 1 : 0;
      if (i > 0) {
        poner({bloque(i), de_mas});
      } else {
        poner({principio, delante});
        poner({{principio.hasta, ventana_larga}, de_mas - delante});
      }
    }
  }

  void poner(sospecha s) {
    if (s.de_mas != 0) abiertas_.push_back(s);
  }

  static bool dentro(tramo t) { return t.desde >= 0 && t.hasta <= chip.flash; }
  static bool ajeno(tramo a, tramo b) { return a.hasta <= b.desde || b.hasta <= a.desde; }

  /// All ranges in doubt but `s` lie whole inside of `ventana` or whole outside.
  bool sirve(tramo ventana, const sospecha& s) const {
    return dentro(ventana) && std::ranges::all_of(abiertas_, [&](const sospecha& otra) {
             return otra.donde == s.donde || ventana.contiene(otra.donde) || ajeno(ventana, otra.donde);
           });
  }

  /// Splits one range. False when none can be.
  bool partir_una() {
    for (std::size_t i = 0; i < abiertas_.size(); ++i) {
      const sospecha s = abiertas_[i];
      if (s.donde.largo() <= largo_de_hoja) continue;
      const std::int32_t medio = s.donde.desde + (s.donde.largo() + 1) / 2;
      for (const std::int32_t ancho : {ventana_corta, ventana_larga}) {
        const tramo derecha{medio, medio + ancho}, izquierda{medio - ancho, medio};
        if (derecha.hasta >= s.donde.hasta && sirve(derecha, s)) return partir(i, medio, derecha);
        if (izquierda.desde <= s.donde.desde && sirve(izquierda, s)) return partir(i, medio, izquierda);
      }
    }
    return false;
  }

  bool partir(std::size_t i, std::int32_t medio, tramo ventana) {
    const auto e = c_.examinar_donde_sea(ventana.desde, ventana.largo());
    if (!e) return false;
    const sospecha s = abiertas_[i];
    std::int64_t parte = std::int64_t{e->suma} - debe_.suma(ventana);
    for (const sospecha& otra : abiertas_) {
      if (!(otra.donde == s.donde) && ventana.contiene(otra.donde)) parte -= otra.de_mas;
    }
    const bool es_la_derecha = ventana.desde == medio;
    abiertas_.erase(abiertas_.begin() + static_cast<std::ptrdiff_t>(i));
    poner({{s.donde.desde, medio}, es_la_derecha ? s.de_mas - parte : parte});
    poner({{medio, s.donde.hasta}, es_la_derecha ? parte : s.de_mas - parte});
    return true;
  }

  bool leer(tramo donde, std::vector<std::uint8_t>& hay) {
    return c_.leer(donde.desde, std::span(hay).subspan(static_cast<std::size_t>(donde.desde),
                                                       static_cast<std::size_t>(donde.largo())));
  }

  /// True if what was read of `s` is off by as much as its windows have said.
  bool cuadra(const sospecha& s, const std::vector<std::uint8_t>& hay) const {
    std::int64_t de_mas = 0;
    for (std::int32_t dir = s.donde.desde; dir < s.donde.hasta; ++dir) {
      const auto k = static_cast<std::size_t>(dir);
      de_mas += hay[k] - debe_.bytes[k];
    }
    return de_mas == s.de_mas;
  }

  bool leer_sospechas(std::vector<std::uint8_t>& hay) {
    std::ranges::sort(abiertas_, {}, [](const sospecha& s) { return s.donde.desde; });
    std::int64_t total = 0, hechos = 0;
    for (const sospecha& s : abiertas_) total += s.donde.largo();
    c_.empezar(fase::localizar, total);
    for (const sospecha& s : abiertas_) {
      if (!leer(s.donde, hay)) return false;
      c_.avanzar(hechos += s.donde.largo());
    }
    const bool cuadran = std::ranges::all_of(abiertas_, [&](const sospecha& s) { return cuadra(s, hay); });
    if (cuadran) return true;
    // The parts do not add up: either the board takes such windows for something else, or the line has lied.
    c_.abandonar_forma();
    sospechar();
    return std::ranges::all_of(abiertas_, [&](const sospecha& s) { return leer(s.donde, hay); });
  }

  conversacion& c_;
  const objetivo& debe_;
  const firma suya_;
  const int dudas_;
  std::vector<sospecha> abiertas_;
  int dudosos_ = 0;
  std::int64_t gasto_ = 0;
};

}  // namespace

std::optional<firma> pedir_firma(conversacion& c) {
  firma f;
  const bool pedida = c.en_lote([&] {
    const auto p = c.examinar(principio.desde, principio.largo());
    if (!p) return false;
    f.principio = p->suma;
    for (int i = 0; i < bloques_de_flash; ++i) {
      const auto e = c.examinar(bloque(i).desde, ventana_larga);
      if (!e) return false;
      f.bloques[static_cast<std::size_t>(i)] = e->suma;
      c.avanzar(bloque(i).hasta);
    }
    return true;
  });
  return pedida ? std::optional(f) : std::nullopt;
}

std::optional<std::vector<diferencia>> localizar(conversacion& c, const objetivo& debe, const firma& suya) {
  c.empezar(fase::localizar);
  std::vector<std::uint8_t> hay;
  const bool visto = c.en_lote([&] {
    hay = debe.bytes;
    return buscador(c, debe, suya).correr(hay);
  });
  if (!visto) return std::nullopt;
  return comparar(debe, hay);
}

}  // namespace morvane::job
