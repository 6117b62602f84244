#include "job/ordenes.h"

#include <algorithm>

#include "job/localizar.h"
#include "pasos.h"

namespace morvane::job {

namespace {

bool rechazar_protegida(conversacion& c) {
  return !c.estado().protegido() || c.fallar(desenlace::protegida, motivo::ninguno);
}

std::optional<std::int32_t> primera(const std::vector<diferencia>& d) {
  return d.empty() ? std::nullopt : std::optional(d.front().donde.desde);
}

bool comprobar_proteccion(conversacion& c) {
  const tramo donde = chip.palabra_proteccion;
  const std::uint32_t quiero = palabra_de_proteccion();
  const auto hay = c.leer_palabra(donde.desde);
  if (!hay) return false;
  if ((*hay & quiero) != quiero) return c.fallar(desenlace::distinta, motivo::contenido, donde.desde);
  if (*hay == quiero || c.grabar_palabra(donde.desde, quiero)) return true;
  // In doubt the chip was opened again, and is now what it was to become.
  return c.perdonar(desenlace::protegida);
}

}  // namespace

resultado ver_estado(const puesto& p) {
  resultado r;
  const tiempo inicio = p.mundo.ahora();
  conversacion c(p);
  if (c.abrir(false)) r.estado = c.estado();
  r.cerrado = c.cerrar();
  r.fin = c.por_que();
  r.gastos = c.gastos();
  r.duracion = p.mundo.ahora() - inicio;
  return r;
}

resultado borrar(const puesto& p) {
  return con_chip(p, [](conversacion& c, resultado& r) {
    r.borrado = false;
    if (dejar_en_blanco(c, r, true)) r.en_blanco = true;
  });
}

resultado verificar(const puesto& p, const objetivo& que, job::prueba como) {
  return con_chip(p, [&](conversacion& c, resultado& r) {
    bool iguales = false;
    if (!rechazar_protegida(c) || !probar(c, que, como, r, iguales)) return;
    if (!iguales) c.fallar(desenlace::distinta, motivo::contenido, primera(r.diferencias));
  });
}

resultado leer(const puesto& p, tramo donde) {
  return con_chip(p, [&](conversacion& c, resultado& r) {
    if (!rechazar_protegida(c)) return;
    c.empezar(fase::leer, donde.largo());
    std::vector<std::uint8_t> hay(static_cast<std::size_t>(donde.largo()));
    if (leer_tramo(c, donde, hay)) r.leido = std::move(hay);
  });
}

resultado identificar(const puesto& p, std::span<const firma> candidatas) {
  return con_chip(p, [&](conversacion& c, resultado& r) {
    if (!rechazar_protegida(c)) return;
    c.empezar(fase::mirar, chip.flash);
    r.sumas = pedir_firma(c);
    if (!r.sumas) return;
    r.en_blanco = *r.sumas == firma::en_blanco();
    for (std::size_t i = 0; i < candidatas.size(); ++i) {
      if (candidatas[i] == *r.sumas) r.identificados.push_back(i);
    }
    if (r.identificados.empty()) c.fallar(desenlace::distinta, motivo::contenido);
  });
}

resultado reiniciar(const puesto& p) {
  return con_chip(p, [](conversacion& c, resultado&) {
    c.empezar(fase::reiniciar);
    if (c.puede_seguir()) c.reiniciar();
  });
}

resultado proteger(const puesto& p) {
  return con_chip(p, [](conversacion& c, resultado& r) {
    c.empezar(fase::proteger);
    if (c.estado().protegido() || !c.puede_seguir()) return;
    if (!comprobar_proteccion(c) || !c.abrir_de_nuevo()) return;
    r.estado = c.estado();
    if (!r.estado->protegido()) c.fallar(desenlace::chip, motivo::sin_proteccion, chip.palabra_proteccion.desde);
  });
}

}  // namespace morvane::job
