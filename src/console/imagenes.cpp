#include "imagenes.h"

#include <algorithm>
#include <utility>

#include "console/huella.h"
#include "files/archivos.h"
#include "files/fichero_entero.h"
#include "files/lista_archivos.h"
#include "frases.h"
#include "frases/frases.h"
#include "platform/proceso.h"
#include "platform/rutas.h"

namespace morvane::console {

using job::desenlace;

std::string imagen_leida::nombre() const {
  return texto_de(archivo.ruta.filename());
}

namespace {

void decir(const llamada& ll, const std::filesystem::path& ruta, const aviso& a) {
  json hechos = {{"archivo", texto_de(ruta)}};
  if (a.linea > 0) hechos["linea"] = a.linea;
  if (a.cuantos > 0) hechos["cuantos"] = a.cuantos;
  ll.cara.duda(nombre_de(a.cual), texto_de(ruta.filename()) + ": " + con_punto(frase(a)), hechos);
}

}  // namespace

imagen_leida leer_imagen(const llamada& ll, const std::filesystem::path& ruta) {
  const bool con_base = formato_de(ruta) == formato::bin;
  auto leido = leer_firmware(ruta, con_base ? ll.a.en : std::nullopt);
  if (const auto* fallo = std::get_if<fallo_firmware>(&leido)) {
    fracaso f{{.que = desenlace::archivo, .texto = texto_de(ruta) + ": " + con_punto(frase(*fallo))}};
    f.fin.datos["archivo"] = texto_de(ruta);
    if (fallo->linea > 0) f.fin.datos["linea"] = fallo->linea;
    throw f;
  }
  auto& f = std::get<firmware>(leido);
  for (const aviso& a : f.avisos) decir(ll, ruta, a);
  job::objetivo que(f.v);
  return {std::move(f), std::move(que)};
}

void poner_imagen(json& datos, const imagen_leida& i) {
  datos["archivo"] = texto_de(i.archivo.ruta);
  datos["sha256_archivo"] = i.archivo.sha256_archivo;
  datos["sha256"] = sha256(i.que.bytes);
}

candidatas de_la_lista(const llamada& ll) {
  candidatas c;
  const archivos ficheros(carpeta_de(ll));
  const std::string nombre = ficheros.ruta_aplicacion() + std::string(nombre_lista);
  const auto texto = ficheros.Dir(nombre).empty() ? std::nullopt : ficheros.leer(nombre);
  std::vector<std::string> rutas = rutas_de_lista(texto.value_or(""));
  std::ranges::reverse(rutas);
  for (const std::string& ruta : rutas) {
    const auto leido = leer_firmware(ruta_de(ruta), std::nullopt);
    if (const auto* f = std::get_if<firmware>(&leido)) {
      c.rutas.push_back(f->ruta);
      c.firmas.push_back(job::objetivo(f->v).sumas());
    } else {
      c.omitidas.push_back(ruta_de(ruta));
    }
  }
  return c;
}

void guardar(const std::filesystem::path& ruta, std::string_view contenido, cierre& fin) {
  const error_archivo error = reemplazar_archivo(ruta, contenido);
  if (error == 0) return;
  fin.que = desenlace::archivo;
  fin.texto = en_frase("No se puede escribir " + texto_de(ruta) + ": " + frase_de_escritura(causa_de_escritura(error)));
}

void guardar_piezas(const llamada& ll, const std::filesystem::path& ruta, std::span<const pieza> piezas,
                    bool bin_desde_cero, cierre& fin) {
  const formato como = *formato_de(ruta);
  guardar(ruta, contenido_de(como, piezas, bin_desde_cero), fin);
  const auto duda = duda_al_escribir(como, piezas);
  if (duda && fin.bien()) decir(ll, ruta, *duda);
}

void exigir_sitio(const std::filesystem::path& ruta) {
  std::error_code error;
  const std::filesystem::path carpeta = std::filesystem::absolute(ruta, error).parent_path();
  if (!std::filesystem::is_directory(carpeta, error)) {
    fracasar(desenlace::archivo, "No se puede escribir " + texto_de(ruta) + ": la carpeta no existe.");
  }
  if (std::filesystem::is_directory(ruta, error)) {
    fracasar(desenlace::archivo, "No se puede escribir " + texto_de(ruta) + ": es una carpeta.");
  }
  if (!se_puede_escribir_en(carpeta)) {
    fracasar(desenlace::archivo, "No se puede escribir " + texto_de(ruta) + ": sin permiso en su carpeta.");
  }
}

}  // namespace morvane::console
