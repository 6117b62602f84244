#include "frases.h"
#include "ordenes.h"

namespace morvane::console {

cierre hacer_proteger(const llamada& ll) {
  const trabajo_hecho t = con_placa(ll, [](const job::puesto& p) { return job::proteger(p); });
  const bool ocupado = t.r.fin.que == job::desenlace::distinta;
  std::string texto;
  if (t.r.fin.bien()) texto = "El chip está protegido contra la lectura: lo dice su estado al abrirlo otra vez.";
  if (ocupado) {
    texto = "No se ha protegido: en " + rango(chip.palabra_proteccion) + " hay algo grabado que no lo permite.";
  }
  cierre c = cierre_de(ll, t, std::move(texto));
  if (ocupado) c.remedio = "Borre el chip, o grábelo con un archivo que ponga ahí FFFF4AC8.";
  return c;
}

}  // namespace morvane::console
