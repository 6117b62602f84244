#include "barra.h"
#include "files/texto.h"
#include "frases.h"
#include "frases/numeros.h"
#include "identidad.h"
#include "imagenes.h"
#include "ordenes.h"
#include "serial/parametros_linea.h"

namespace morvane::console {

namespace {

json tramos_en_json(const std::vector<tramo>& todos) {
  json lista = json::array();
  for (const tramo t : todos) lista.push_back({{"desde", t.desde}, {"hasta", t.hasta - 1}});
  return lista;
}

void decir_tramos(cierre& c, std::string_view que, const std::vector<tramo>& todos) {
  constexpr std::size_t bastantes = 20;
  for (std::size_t i = 0; i < todos.size() && i < bastantes; ++i) {
    c.detalle.push_back(std::string(que) + rango(todos[i]) + " (" + entero(todos[i].largo()) + " bytes)");
  }
  if (todos.size() > bastantes) {
    c.detalle.push_back("  y " + entero(static_cast<std::int64_t>(todos.size() - bastantes)) + " más");
  }
}

std::string bytes_en_hex(const std::vector<std::uint8_t>& bytes) {
  std::string t;
  for (const std::uint8_t b : bytes) anadir_hex(t, b, 2);
  return t;
}

void poner_coste(cierre& c, const job::plan& p, int velocidad) {
  const auto dura = [&](std::int64_t n) { return tiempo_en_la_linea(n, velocidad); };
  const auto segundos = [&](std::int64_t n) { return std::chrono::duration<double>(dura(n)).count(); };
  c.datos["velocidad"] = velocidad;
  c.datos["previsto"] = {{"caracteres", p.caracteres},
                         {"caracteres_en_blanco", p.caracteres_en_blanco},
                         {"caracteres_ventana", p.caracteres_ventana},
                         {"segundos", segundos(p.caracteres)},
                         {"segundos_en_blanco", segundos(p.caracteres_en_blanco)},
                         {"segundos_ventana", segundos(p.caracteres_ventana)}};
  c.detalle.push_back("En la línea, a " + std::to_string(velocidad) + " baudios: " + duracion(dura(p.caracteres)) +
                      " y el borrado; en un chip borrado, " + duracion(dura(p.caracteres_en_blanco)) +
                      "; la ventana, " + duracion(dura(p.caracteres_ventana)));
}

void poner_plan(cierre& c, const job::plan& p) {
  c.datos["palabras"] = p.palabras;
  c.datos["palabras_ff"] = p.palabras_ff;
  c.datos["datos"] = tramos_en_json(p.datos);
  c.datos["huecos"] = tramos_en_json(p.huecos);
  c.datos["configuracion"] = bytes_en_hex(p.configuracion);
  if (!p.sin_mirar.vacio()) c.datos["sin_mirar"] = tramos_en_json({p.sin_mirar}).front();
  decir_tramos(c, "Datos:  ", p.datos);
  decir_tramos(c, "Huecos: ", p.huecos);
  c.detalle.push_back("De " + rango(chip.configuracion) + ": " +
                      (p.configuracion.empty() ? "nada, queda borrado" : bytes_en_hex(p.configuracion)));
}

}  // namespace

json dudas_en_json(const imagen_leida& i, const job::plan& p) {
  json lista = json::array();
  for (const aviso& a : i.archivo.avisos) {
    lista.push_back({{"clase", nombre_de(a.cual)}, {"texto", con_punto(frase(a))}});
  }
  for (const job::duda d : p.dudas) lista.push_back({{"clase", nombre_de(d)}, {"texto", frase(d, p)}});
  return lista;
}

cierre hacer_plan(const llamada& ll) {
  const int velocidad = elegir_puerto(ll).como.velocidad;
  const imagen_leida i = leer_imagen(ll, ll.a.archivos.front());
  const job::plan p = job::planear(i.archivo.v);
  cierre c;
  poner_imagen(c.datos, i);
  poner_plan(c, p);
  poner_coste(c, p, velocidad);
  c.datos["dudas"] = dudas_en_json(i, p);
  for (const job::duda d : p.dudas) {
    // Of data for the configuration field that are not loaded the reader has told more.
    const bool dicha = d == job::duda::datos_en_configuracion && i.archivo.de == formato::s19;
    if (!dicha) ll.cara.duda(nombre_de(d), frase(d, p), json::object());
  }
  c.texto = i.nombre() + ": " + entero(p.palabras) + " palabras por grabar, de " + rango(p.escrito);
  if (p.palabras_ff > 0) c.texto += "; otras " + entero(p.palabras_ff) + " son FFFFFFFF y no se graban";
  c.texto += ".";
  return c;
}

}  // namespace morvane::console
