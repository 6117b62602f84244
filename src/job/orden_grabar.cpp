#include "job/ordenes.h"
#include "pasos.h"

namespace morvane::job {

namespace {

/// How often words that a doubtful line has cost are written again behind the proof; how often a chip that protects
/// itself by the very image is begun anew, since a doubt locks it.
constexpr int remiendos = 3, comienzos = 4;

class grabacion {
 public:
  grabacion(conversacion& c, const objetivo& que, opciones_grabar como, resultado& r)
      : c_(c), que_(que), como_(como), r_(r) {}

  bool correr() {
    r_.borrado = false;
    if (!dejar_en_blanco(c_, r_, false)) return false;
    r_.palabras = 0;
    if (!escribir()) return false;
    for (int n = 0;; ++n) {
      bool iguales = false;
      if (!probar(c_, que_, como_.prueba, r_, iguales)) return false;
      if (iguales) return true;
      if (c_.dudas() == 0 || n == remiendos) return no_ha_quedado();
      if (!remendar()) return false;
    }
  }

 private:
  bool palabra(std::int32_t dir) {
    if (!c_.puede_seguir() || !c_.grabar_palabra(dir, que_.palabra(dir))) return false;
    ++r_.palabras;
    return true;
  }

  /// The protection word goes last: whatever comes before it may still have the chip opened again.
  bool escribir() {
    const bool protege = que_.protege();
    const std::int32_t ultima = chip.palabra_proteccion.desde;
    c_.empezar(fase::grabar, que_.escrito.largo());
    for (std::int32_t dir = que_.escrito.desde; dir < que_.escrito.hasta; dir += bytes_por_palabra) {
      if (protege && dir == ultima) continue;
      if (que_.palabra(dir) == palabra_en_blanco && !como_.todo) continue;
      if (!palabra(dir)) return false;
      c_.avanzar(dir + bytes_por_palabra - que_.escrito.desde);
    }
    return !protege || palabra(ultima);
  }

  bool no_ha_quedado() {
    const auto& d = r_.diferencias;
    const bool sin_grabar = !d.empty() && d.front().clase == aspecto::no_grabado;
    return c_.fallar(desenlace::chip, sin_grabar ? motivo::palabra_no_grabada : motivo::palabra_extrana,
                     d.empty() ? std::nullopt : std::optional(d.front().donde.desde));
  }

  /// Where replies came out of their turn, a word may have been refused for which another one was praised. It is read;
  /// still erased, it goes out again.
  bool remendar() {
    for (const diferencia& d : r_.diferencias) {
      std::int32_t dir = d.donde.desde - d.donde.desde % bytes_por_palabra;
      for (; dir < d.donde.hasta; dir += bytes_por_palabra) {
        const auto hay = c_.leer_palabra(dir);
        if (!hay) return false;
        if (*hay == que_.palabra(dir)) continue;
        if (*hay != palabra_en_blanco) return c_.fallar(desenlace::chip, motivo::palabra_extrana, dir);
        c_.contar(suceso::palabra_otra_vez, {}, dir);
        if (!c_.puede_seguir() || !c_.grabar_palabra(dir, que_.palabra(dir))) return false;
      }
    }
    return true;
  }

  conversacion& c_;
  const objetivo& que_;
  const opciones_grabar como_;
  resultado& r_;
};

}  // namespace

resultado grabar(const puesto& p, const objetivo& que, opciones_grabar como) {
  if (que.escrito.vacio()) {
    resultado r;
    r.fin.que = desenlace::archivo;
    return r;
  }
  return con_chip(p, [&](conversacion& c, resultado& r) {
    for (int n = 1; !grabacion(c, que, como, r).correr(); ++n) {
      if (!que.protege() || n == comienzos || !c.perdonar(desenlace::protegida)) return;
    }
  });
}

}  // namespace morvane::job
