#include <algorithm>
#include <array>
#include <functional>
#include <span>

#include "job/ordenes.h"
#include "pasos.h"

namespace morvane::job {

namespace {

constexpr std::int32_t bytes_leidos = 32;
/// A reading that takes as many characters as a word that is written.
constexpr std::int32_t bytes_como_palabra = 3;

/// How long `que` takes, `muestras` times, sorted; `antes` runs before each time and does not count. Empty if one of
/// them fails.
std::vector<tiempo> cronometrar(conversacion& c, int muestras, const std::function<bool()>& antes,
                                const std::function<bool()>& que) {
  entorno& mundo = c.lugar().mundo;
  std::vector<tiempo> t;
  for (int i = 0; i < muestras; ++i) {
    if (!c.puede_seguir() || !antes()) return {};
    const tiempo inicio = mundo.ahora();
    if (!que()) return {};
    t.push_back(mundo.ahora() - inicio);
  }
  std::ranges::sort(t);
  return t;
}

tiempo del_medio(const std::vector<tiempo>& t) {
  return t[t.size() / 2];
}

/// Times of a look at the status, of a reading, and of what a word takes.
struct tandas {
  std::vector<tiempo> cortos, largos, palabras;
  bool enteras() const { return !cortos.empty() && !largos.empty() && !palabras.empty(); }
};

/// A reading of another length goes between those that count, which would otherwise be parted.
tandas cronometrar(conversacion& c, int muestras) {
  std::array<std::uint8_t, bytes_leidos> b;
  const auto leer = [&](std::int32_t cuantos) {
    return c.leer(0, std::span(b).first(static_cast<std::size_t>(cuantos)));
  };
  const auto otra = [&] { return leer(bytes_como_palabra + 1); };
  tandas t;
  t.cortos = cronometrar(
      c, muestras, [] { return true; }, [&] { return c.mirar().has_value(); });
  if (c.estado().protegido()) c.fallar(desenlace::protegida, motivo::ninguno);
  if (t.cortos.empty() || !c.por_que().bien() || !c.preparar()) return {};
  t.largos = cronometrar(c, muestras, otra, [&] { return leer(bytes_leidos); });
  t.palabras = cronometrar(c, muestras, otra, [&] { return c.permitir() && leer(bytes_como_palabra); });
  return t;
}

medida calcular(const tandas& t) {
  medida m{.minimo = t.cortos.front(),
           .medio = del_medio(t.cortos),
           .maximo = t.cortos.back(),
           .lectura = del_medio(t.largos)};
  m.muestras = static_cast<int>(t.cortos.size());
  const std::int64_t corto = ver_estado().coste(), largo = leer(0, bytes_leidos).coste();
  m.por_caracter = std::max(m.lectura - m.medio, tiempo{0}) / (largo - corto);
  m.palabra = del_medio(t.palabras);
  const tiempo fijo = std::max(m.medio - corto * m.por_caracter, tiempo{0});
  m.flash_entera =
      chip.flash / 4 * m.palabra + bloques_de_flash * (fijo + examinar(0, ventana_larga).coste() * m.por_caracter);
  return m;
}

}  // namespace

resultado medir(const puesto& p, int muestras) {
  return con_chip(p, [&](conversacion& c, resultado& r) {
    c.empezar(fase::medir);
    tandas t;
    const bool bien = c.en_lote([&] { return (t = cronometrar(c, muestras)).enteras(); });
    if (bien) r.medida = calcular(t);
  });
}

}  // namespace morvane::job
