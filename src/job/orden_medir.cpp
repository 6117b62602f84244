#include <algorithm>
#include <array>
#include <functional>

#include "job/ordenes.h"
#include "pasos.h"

namespace morvane::job {

namespace {

constexpr std::int32_t bytes_leidos = 32;

/// How long `que` takes, `muestras` times, sorted. Empty if it fails.
std::vector<tiempo> cronometrar(conversacion& c, int muestras, const std::function<bool()>& que) {
  entorno& mundo = c.lugar().mundo;
  std::vector<tiempo> t;
  for (int i = 0; i < muestras; ++i) {
    const tiempo inicio = mundo.ahora();
    if (!c.puede_seguir() || !que()) return {};
    t.push_back(mundo.ahora() - inicio);
  }
  std::ranges::sort(t);
  return t;
}

tiempo del_medio(const std::vector<tiempo>& t) {
  return t[t.size() / 2];
}

medida calcular(const std::vector<tiempo>& cortos, const std::vector<tiempo>& largos) {
  medida m{.minimo = cortos.front(), .medio = del_medio(cortos), .maximo = cortos.back(), .lectura = del_medio(largos)};
  m.muestras = static_cast<int>(cortos.size());
  const std::int64_t corto = ver_estado().coste(), largo = leer(0, bytes_leidos).coste();
  m.por_caracter = std::max(m.lectura - m.medio, tiempo{0}) / (largo - corto);
  const tiempo fijo = std::max(m.medio - corto * m.por_caracter, tiempo{0});
  const auto dura = [&](const mandato& que) { return fijo + que.coste() * m.por_caracter; };
  m.flash_entera = chip.flash / 4 * (dura(permitir_escritura()) + dura(grabar(0, 0))) +
                   bloques_de_flash * dura(examinar(0, ventana_larga));
  return m;
}

}  // namespace

resultado medir(const puesto& p, int muestras) {
  return con_chip(p, [&](conversacion& c, resultado& r) {
    c.empezar(fase::medir);
    std::vector<tiempo> cortos, largos;
    const bool bien = c.en_lote([&] {
      cortos = cronometrar(c, muestras, [&] { return c.mirar().has_value(); });
      if (c.estado().protegido()) return c.fallar(desenlace::protegida, motivo::ninguno);
      std::array<std::uint8_t, bytes_leidos> b;
      largos = cronometrar(c, muestras, [&] { return c.leer(0, b); });
      return !cortos.empty() && !largos.empty();
    });
    if (bien) r.medida = calcular(cortos, largos);
  });
}

}  // namespace morvane::job
