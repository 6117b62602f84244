#include "console/certificado.h"
#include "frases.h"
#include "imagenes.h"
#include "ordenes.h"
#include "platform/rutas.h"

namespace morvane::console {

namespace {

using job::desenlace;

certificado_leido leer_certificado(const std::filesystem::path& ruta) {
  auto leido = comprobar_certificado(ruta);
  if (const auto* fallo = std::get_if<fallo_certificado>(&leido)) {
    const bool ilegible = fallo->cual == fallo_certificado::clase::leer;
    fracasar(ilegible ? desenlace::archivo : desenlace::certificado, texto_de(ruta) + ": " + con_punto(frase(*fallo)));
  }
  return std::get<certificado_leido>(std::move(leido));
}

/// A field as people read it; empty if there is none.
std::string campo(const json& hechos, const char* nombre) {
  if (!hechos.contains(nombre)) return {};
  const json& v = hechos[nombre];
  return v.is_string() ? v.get<std::string>() : v.dump();
}

std::string lo_hecho(const certificado_leido& cert) {
  return campo(cert.hechos, "orden") + " " + campo(cert.hechos, "archivo") + ", prueba por " +
         campo(cert.hechos, "prueba") + ", " + campo(cert.hechos, "fin");
}

/// Anybody can sign; whose key it is, is what a signature is worth. No key is made for that.
bool es_de_este_equipo(const llamada& ll, const certificado_leido& cert) {
  const auto mia = clave_que_hay(ll.fuera.carpeta_de_claves());
  return mia && mia->publica() == cert.clave;
}

void comparar_con(const certificado_leido& cert, const imagen_leida& i, cierre& c) {
  json suyo;
  poner_imagen(suyo, i);
  c.datos.update(suyo);
  if (suyo["sha256_archivo"] == campo(cert.hechos, "sha256_archivo")) {
    c.texto = "El certificado está entero y es de " + i.nombre() + ": " + lo_hecho(cert) + ".";
    return;
  }
  c.que = desenlace::certificado;
  const bool misma_imagen = suyo["sha256"] == campo(cert.hechos, "sha256");
  c.texto = "El certificado está entero, pero no es de " + i.nombre() + ", sino de " + campo(cert.hechos, "archivo") +
            (misma_imagen ? ", que deja el chip igual." : ".");
}

}  // namespace

cierre hacer_comprobar(const llamada& ll) {
  const auto& ruta = ll.a.archivos.front();
  const certificado_leido cert = leer_certificado(ruta);
  const bool propia = es_de_este_equipo(ll, cert);
  cierre c{.texto = "El certificado está entero: " + lo_hecho(cert) + "."};
  c.datos["clave"] = cert.clave;
  c.datos["clave_propia"] = propia;
  c.datos["hechos"] = cert.hechos;
  c.detalle.push_back("Clave: " + cert.clave + (propia ? ", la de este usuario" : ", que no es la de este usuario"));
  if (ll.a.archivos.size() > 1) comparar_con(cert, leer_imagen(ll, ll.a.archivos[1]), c);
  return c;
}

}  // namespace morvane::console
