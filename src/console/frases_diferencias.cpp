#include <cstdlib>

#include "frases.h"

namespace morvane::console {

using job::aspecto;

std::string_view nombre_de(aspecto clase) {
  switch (clase) {
    case aspecto::no_borrado:
      return "no_borrado";
    case aspecto::no_grabado:
      return "no_grabado";
    case aspecto::bit_a_0:
      return "bit_a_0";
    case aspecto::bit_a_1:
      return "bit_a_1";
    case aspecto::movido:
      return "movido";
    case aspecto::otro:
      break;
  }
  return "otro";
}

namespace {

std::string forma(const job::diferencia& d) {
  switch (d.clase) {
    case aspecto::no_borrado:
      return "no borrado";
    case aspecto::no_grabado:
      return d.donde.largo() <= 4 ? "palabra no grabada" : "palabras no grabadas";
    case aspecto::bit_a_0:
      return "bit a 0";
    case aspecto::bit_a_1:
      return "bit a 1";
    case aspecto::movido: {
      const int n = std::abs(d.corrimiento);
      return "movido " + std::to_string(n) + (n == 1 ? " byte" : " bytes") + " hacia " +
             (d.corrimiento > 0 ? "arriba" : "abajo");
    }
    case aspecto::otro:
      break;
  }
  return "otro contenido";
}

}  // namespace

std::string frase(const job::diferencia& d) {
  const std::int32_t n = d.donde.largo();
  return rango(d.donde) + " (" + std::to_string(n) + (n == 1 ? " byte" : " bytes") + "): " + forma(d);
}

std::string_view lo_que_no_ven_las_sumas() {
  return "las sumas no ven bytes cambiados de sitio dentro de un bloque, ni cambios que se compensan";
}

}  // namespace morvane::console
