#include "acta.h"

#include "console/certificado.h"
#include "console/huella.h"
#include "frases.h"
#include "platform/rutas.h"

namespace morvane::console {

namespace {

clave clave_propia(const llamada& ll) {
  auto hallada = clave_guardada(ll.fuera.carpeta_de_claves());
  if (const auto* fallo = std::get_if<fallo_clave>(&hallada)) {
    fracasar(job::desenlace::archivo, en_frase("no se puede firmar: " + frase(*fallo)));
  }
  return std::get<clave>(hallada);
}

json sumas_de(const job::firma& f) {
  json lista = json::array({f.principio});
  for (const std::uint32_t s : f.bloques) lista.push_back(s);
  return lista;
}

json adaptador_de(const exterior& fuera) {
  const adaptador a = fuera.aparato();
  return {{"fabricante", a.fabricante}, {"producto", a.producto}, {"serie", a.serie}};
}

void poner_prueba(json& j, const job::resultado& r) {
  j["prueba"] = *r.prueba == job::prueba::sumas ? "sumas" : "lectura";
  if (r.sumas) j["sumas"] = sumas_de(*r.sumas);
  if (!r.leido.empty()) j["sha256_leido"] = sha256(r.leido);
}

}  // namespace

acta::acta(const llamada& ll) : ll_(ll) {
  if (ll.a.certificado.empty()) return;
  exigir_sitio(ll.a.certificado);
  clave_ = clave_propia(ll);
  principio_ = ll.fuera.hora();
}

void acta::escribir(const imagen_leida& i, const trabajo_hecho& t, cierre& fin) const {
  if (!clave_ || !fin.bien()) return;
  json j = {{"programa", "morvane-cli"}, {"version", MORVANE_VERSION}, {"orden", nombre_de(ll_.a.que)}};
  j["desenlace"] = nombre_de(fin.que);
  j["principio"] = principio_;
  j["fin"] = ll_.fuera.hora();
  poner_imagen(j, i);
  j["desde"] = i.que.escrito.desde;
  j["hasta"] = i.que.escrito.hasta - 1;
  if (ll_.a.que == orden::grabar) j["palabras"] = t.r.palabras;
  if (t.r.borrado) j["borrado"] = *t.r.borrado;
  poner_prueba(j, t.r);
  j["respuestas"] = t.r.gastos.respuestas;
  j["caracteres"] = t.r.gastos.caracteres();
  j["puerto"] = t.puerto.nombre;
  j["dispositivo"] = texto_de(t.dispositivo);
  j["velocidad"] = t.puerto.como.velocidad;
  j["adaptador"] = adaptador_de(ll_.fuera);
  guardar(ll_.a.certificado, certificado_firmado(j, *clave_), fin);
  if (fin.bien()) fin.datos["certificado"] = texto_de(ll_.a.certificado);
}

}  // namespace morvane::console
