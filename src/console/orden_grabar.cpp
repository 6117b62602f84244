#include "acta.h"
#include "barra.h"
#include "frases.h"
#include "frases/numeros.h"
#include "identidad.h"
#include "imagenes.h"
#include "ordenes.h"

namespace morvane::console {

namespace {

std::string prueba_en_palabras(job::prueba p) {
  return p == job::prueba::sumas ? "por sumas" : "leyendo los " + entero(chip.flash) + " bytes";
}

/// What stands behind a proof: what it cannot see, if anything.
std::string reserva(job::prueba p) {
  return p == job::prueba::sumas ? "; " + std::string(lo_que_no_ven_las_sumas()) + "." : ".";
}

std::string palabras_grabadas(std::int64_t n) {
  return n == 1 ? "1 palabra" : entero(n) + " palabras";
}

std::string texto_grabado(const job::resultado& r, job::prueba p) {
  return "Grabado y demostrado " + prueba_en_palabras(p) + ": " + palabras_grabadas(r.palabras) +
         (r.borrado.value_or(false) ? ", con borrado, en " : ", sin borrado, en ") + duracion(r.duracion) + reserva(p);
}

std::string texto_distinto(const std::string& nombre, const job::resultado& r) {
  std::string t = "El chip difiere de " + nombre;
  const std::size_t n = r.diferencias.size();
  if (n == 0) return t + " en lo que ven las sumas.";
  t += n == 1 ? " en " : " en " + entero(static_cast<std::int64_t>(n)) + " tramos, el primero ";
  return t + frase(r.diferencias.front()) + ".";
}

/// What a person should hear of a file that goes to a chip now. What the window would say of it belongs to the plan.
bool importa_al_grabar(job::duda d) {
  return d == job::duda::solo_ff || d == job::duda::fuera_de_flash || d == job::duda::escribe_configuracion ||
         d == job::duda::protegera || d == job::duda::sin_arranque;
}

}  // namespace

cierre hacer_grabar(const llamada& ll) {
  const imagen_leida i = leer_imagen(ll, ll.a.archivos.front());
  const job::plan previsto = job::planear(i.archivo.v);
  for (const job::duda d : previsto.dudas) {
    if (importa_al_grabar(d)) ll.cara.duda(nombre_de(d), frase(d, previsto), json::object());
  }
  const acta certificado(ll);
  const trabajo_hecho t = con_placa(ll, [&](const job::puesto& p) {
    certificado.empezar();
    return job::grabar(p, i.que, {.prueba = ll.a.prueba, .todo = ll.a.todo});
  });
  cierre c = cierre_de(ll, t, t.r.fin.bien() ? texto_grabado(t.r, ll.a.prueba) : "");
  poner_imagen(c.datos, i);
  c.datos["palabras"] = t.r.palabras;
  c.datos["dudas"] = dudas_en_json(i, previsto);
  certificado.escribir(i, t, c);
  return c;
}

cierre hacer_verificar(const llamada& ll) {
  const imagen_leida i = leer_imagen(ll, ll.a.archivos.front());
  const acta certificado(ll);
  const trabajo_hecho t = con_placa(ll, [&](const job::puesto& p) {
    certificado.empezar();
    return job::verificar(p, i.que, ll.a.prueba);
  });
  const bool distinto = t.r.fin.que == job::desenlace::distinta;
  std::string texto;
  if (t.r.fin.bien()) {
    texto = "El chip es igual a " + i.nombre() + ", demostrado " + prueba_en_palabras(ll.a.prueba) + " en " +
            duracion(t.r.duracion) + reserva(ll.a.prueba);
  }
  if (distinto) texto = texto_distinto(i.nombre(), t.r);
  cierre c = cierre_de(ll, t, std::move(texto));
  poner_imagen(c.datos, i);
  if (distinto) decir_que_hay(ll, t.r, c);
  certificado.escribir(i, t, c);
  return c;
}

}  // namespace morvane::console
