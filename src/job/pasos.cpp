#include "pasos.h"

#include <algorithm>
#include <array>

#include "job/localizar.h"

namespace morvane::job {

namespace {

constexpr int borrados = 4;
/// Bytes that are read before a look at something else shows whether each reply came in its turn.
constexpr std::int32_t bytes_por_lote = 0x2000;

using bloques_blancos = std::array<bool, bloques_de_flash>;

/// Looks at the blocks that are not known blank, up to the first one that is not.
bool mirar_bloques(conversacion& c, bloques_blancos& blancos) {
  c.empezar(fase::mirar, chip.flash);
  bloques_blancos vistos{};
  const bool mirados = c.en_lote([&] {
    // What was seen before a doubt is not known.
    vistos = blancos;
    for (int i = 0; i < bloques_de_flash; ++i) {
      bool& este = vistos[static_cast<std::size_t>(i)];
      if (este) continue;
      const auto e = c.examinar(i * ventana_larga, ventana_larga);
      if (!e) return false;
      este = e->borrado && e->suma == 0xFF * static_cast<std::uint32_t>(ventana_larga);
      if (!este) break;
      c.avanzar(std::int64_t{i + 1} * ventana_larga);
    }
    return true;
  });
  if (mirados) blancos = vistos;
  return mirados;
}

bool todos(const bloques_blancos& b) {
  return std::ranges::all_of(b, [](bool x) { return x; });
}

/// Says what was left after an erase that seemed to go well.
bool explicar_resto(conversacion& c, resultado& r) {
  const auto suya = pedir_firma(c);
  if (!suya) return false;
  r.sumas = suya;
  const auto d = localizar(c, objetivo{}, *suya);
  if (!d) return false;
  r.diferencias = *d;
  return c.fallar(desenlace::chip, motivo::borrado_incompleto,
                  d->empty() ? std::nullopt : std::optional(d->front().donde.desde));
}

}  // namespace

resultado con_chip(const puesto& p, const std::function<void(conversacion&, resultado&)>& trabajo) {
  resultado r;
  const tiempo inicio = p.mundo.ahora();
  conversacion c(p);
  if (c.abrir()) {
    r.estado = c.estado();
    trabajo(c, r);
  }
  r.cerrado = c.cerrar();
  r.fin = c.por_que();
  r.gastos = c.gastos();
  r.duracion = p.mundo.ahora() - inicio;
  return r;
}

bool dejar_en_blanco(conversacion& c, resultado& r, bool a_fondo) {
  bloques_blancos blancos{};
  if (!c.estado().protegido()) {
    if (!mirar_bloques(c, blancos)) return false;
    if (todos(blancos)) return true;
  }
  for (int veces = 1; veces <= borrados; ++veces) {
    r.borrado = true;
    if (veces > 1) c.contar(suceso::borrado_otra_vez);
    c.empezar(fase::borrar);
    const int antes = c.dudas();
    if (!c.puede_seguir() || !c.borrar(veces)) return false;
    if (c.estado().protegido() && !c.abrir_de_nuevo()) return false;
    const bool sin_duda = c.dudas() == antes;
    if (c.estado().protegido()) {
      if (sin_duda) return c.fallar(desenlace::chip, motivo::borrado_incompleto, chip.palabra_proteccion.desde);
      continue;
    }
    if (a_fondo || !sin_duda) blancos.fill(false);
    if (!mirar_bloques(c, blancos)) return false;
    if (todos(blancos)) return true;
    if (sin_duda) return explicar_resto(c, r);
  }
  return c.fallar(desenlace::linea, motivo::sin_sosiego);
}

bool leer_tramo(conversacion& c, tramo donde, std::span<std::uint8_t> destino) {
  for (std::int32_t dir = donde.desde; dir < donde.hasta; dir += bytes_por_lote) {
    const std::int32_t n = std::min(bytes_por_lote, donde.hasta - dir);
    const auto parte = destino.subspan(static_cast<std::size_t>(dir - donde.desde), static_cast<std::size_t>(n));
    if (!c.en_lote([&] { return c.leer(dir, parte); })) return false;
    c.avanzar(dir + n - donde.desde);
  }
  return true;
}

bool probar(conversacion& c, const objetivo& que, prueba como, resultado& r, bool& iguales) {
  r.prueba = como;
  c.empezar(fase::probar, chip.flash);
  if (como == prueba::lectura) {
    r.leido.resize(static_cast<std::size_t>(chip.flash));
    if (!leer_tramo(c, {0, chip.flash}, r.leido)) return false;
    r.diferencias = comparar(que, r.leido);
    iguales = r.diferencias.empty();
    return true;
  }
  r.diferencias.clear();
  r.sumas = pedir_firma(c);
  if (!r.sumas) return false;
  iguales = *r.sumas == que.sumas();
  if (iguales) return true;
  const auto d = localizar(c, que, *r.sumas);
  if (d) r.diferencias = *d;
  return d.has_value();
}

}  // namespace morvane::job
