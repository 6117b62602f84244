#include <algorithm>

#include "frases.h"
#include "identidad.h"
#include "imagenes.h"
#include "ordenes.h"
#include "platform/rutas.h"

namespace morvane::console {

namespace {

candidatas las_dadas(const llamada& ll) {
  candidatas c;
  for (const auto& ruta : ll.a.archivos) {
    const imagen_leida i = leer_imagen(ll, ruta);
    c.rutas.push_back(ruta);
    c.firmas.push_back(i.que.sumas());
  }
  return c;
}

candidatas elegir(const llamada& ll) {
  if (!ll.a.archivos.empty()) return las_dadas(ll);
  candidatas c = de_la_lista(ll);
  if (c.rutas.empty()) {
    fracasar(job::desenlace::archivo, "En la lista de archivos del programa no hay ninguno que se pueda cargar.",
             "Diga qué archivos: morvane-cli identificar ARCHIVO...");
  }
  return c;
}

/// The sums of what the chip holds, as far as a job has found them.
std::optional<job::firma> firma_de(const job::resultado& r) {
  if (r.sumas || r.leido.size() != static_cast<std::size_t>(chip.flash)) return r.sumas;
  job::objetivo leido;
  leido.bytes = r.leido;
  return leido.sumas();
}

json rutas_en_json(const std::vector<std::filesystem::path>& rutas) {
  json lista = json::array();
  for (const auto& r : rutas) lista.push_back(texto_de(r));
  return lista;
}

std::string texto_identificado(const std::vector<std::filesystem::path>& estan) {
  std::string t = "En el chip está " + texto_de(estan.front());
  for (std::size_t k = 1; k < estan.size(); ++k) t += ", igual que " + texto_de(estan[k]);
  return t + ", por sus sumas; " + std::string(lo_que_no_ven_las_sumas()) + ".";
}

}  // namespace

cierre hacer_identificar(const llamada& ll) {
  const candidatas cs = elegir(ll);
  const trabajo_hecho t = con_placa(ll, [&](const job::puesto& p) { return job::identificar(p, cs.firmas); });
  std::vector<std::filesystem::path> estan;
  for (const std::size_t k : t.r.identificados) estan.push_back(cs.rutas[k]);
  std::string texto;
  if (t.r.fin.bien() && !estan.empty()) texto = texto_identificado(estan);
  if (t.r.fin.que == job::desenlace::distinta) {
    texto = t.r.en_blanco ? "El chip está en blanco." : "En el chip no está ninguno de estos archivos.";
  }
  cierre c = cierre_de(ll, t, std::move(texto));
  c.datos["candidatos"] = rutas_en_json(cs.rutas);
  c.datos["omitidos"] = rutas_en_json(cs.omitidas);
  c.datos["identificado"] = estan.empty() ? json() : json(texto_de(estan.front()));
  c.datos["identificados"] = rutas_en_json(estan);
  if (t.r.sumas) c.datos["en_blanco"] = t.r.en_blanco;
  return c;
}

void decir_que_hay(const llamada& ll, const job::resultado& r, cierre& c) {
  const auto suya = firma_de(r);
  if (!suya) return;
  const bool en_blanco = *suya == job::firma::en_blanco();
  c.datos["en_blanco"] = en_blanco;
  if (en_blanco) {
    c.detalle.emplace_back("El chip está en blanco.");
    return;
  }
  const candidatas cs = de_la_lista(ll);
  const auto esta = std::ranges::find(cs.firmas, *suya);
  if (esta == cs.firmas.end()) return;
  const auto& ruta = cs.rutas[static_cast<std::size_t>(esta - cs.firmas.begin())];
  c.datos["identificado"] = texto_de(ruta);
  c.detalle.push_back("Tiene otro firmware, por sus sumas: " + texto_de(ruta));
}

}  // namespace morvane::console
