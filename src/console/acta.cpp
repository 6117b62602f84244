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

void poner_prueba(json& j, const job::resultado& r) {
  j["prueba"] = *r.prueba == job::prueba::sumas ? "sumas" : "lectura";
  if (r.sumas) j["sumas"] = sumas_de(*r.sumas);
  if (!r.leido.empty()) j["sha256_leido"] = sha256(r.leido);
}

/// Nothing but an earlier certificate is ever replaced, not the firmware that was named twice.
void exigir_certificado_o_nada(const std::filesystem::path& ruta) {
  const auto hay = comprobar_certificado(ruta);
  const auto* fallo = std::get_if<fallo_certificado>(&hay);
  if (fallo == nullptr || fallo->cual == fallo_certificado::clase::cambiado) return;
  if (fallo->cual == fallo_certificado::clase::firma_mala) return;
  const bool no_esta = fallo->archivo.cual == causa_archivo::clase::no_existe;
  if (fallo->cual == fallo_certificado::clase::leer && no_esta) return;
  fracasar(job::desenlace::archivo,
           "No se escribe el certificado: " + texto_de(ruta) + " existe y no es un certificado.");
}

}  // namespace

acta::acta(const llamada& ll) : ll_(ll) {
  if (ll.a.certificado.empty()) return;
  exigir_sitio(ll.a.certificado);
  exigir_certificado_o_nada(ll.a.certificado);
  clave_ = clave_propia(ll);
  principio_ = ll.fuera.hora();
}

void acta::empezar() const {
  if (!clave_) return;
  std::error_code error;
  std::filesystem::remove(ll_.a.certificado, error);
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
  j["adaptador"] = adaptador_en_json(ll_.fuera.aparato());
  guardar(ll_.a.certificado, certificado_firmado(j, *clave_), fin);
  if (fin.bien()) fin.datos["certificado"] = texto_de(ll_.a.certificado);
}

}  // namespace morvane::console
