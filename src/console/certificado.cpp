#include "console/certificado.h"

#include "files/fichero_entero.h"
#include "frases/frases.h"

namespace morvane::console {

namespace {

using json = nlohmann::ordered_json;

constexpr int version_de_la_forma = 1;
constexpr std::uint64_t certificado_maximo = std::uint64_t{1024} * 1024;
constexpr int sangria = 2;
constexpr const char *campo_forma = "certificado", *campo_clave = "clave", *campo_firma = "firma";

/// The one text of these fields.
std::string escrito(const json& campos) {
  return campos.dump(sangria, ' ', false, json::error_handler_t::replace) + "\n";
}

bool es_certificado(const json& j) {
  return j.is_object() && j.contains(campo_forma) && j[campo_forma] == version_de_la_forma && j.contains(campo_clave) &&
         j[campo_clave].is_string() && j.contains(campo_firma) && j[campo_firma].is_string();
}

}  // namespace

std::string certificado_firmado(const json& hechos, const clave& con) {
  json todo = {{campo_forma, version_de_la_forma}};
  todo.update(hechos);
  todo[campo_clave] = con.publica();
  todo[campo_firma] = con.firma(escrito(todo));
  return escrito(todo);
}

std::variant<certificado_leido, fallo_certificado> comprobar_contenido(std::string_view contenido) {
  json todo = json::parse(contenido, nullptr, false);
  if (todo.is_discarded() || !es_certificado(todo)) return fallo_certificado{fallo_certificado::clase::no_es};
  // A blank, an escape, a field twice or in another place: none of it would be seen in the fields.
  if (escrito(todo) != contenido) return fallo_certificado{fallo_certificado::clase::cambiado};
  const std::string firma = todo[campo_firma], clave_publica = todo[campo_clave];
  todo.erase(campo_firma);
  if (!clave::comprobar(escrito(todo), firma, clave_publica))
    return fallo_certificado{fallo_certificado::clase::firma_mala};
  return certificado_leido{std::move(todo), clave_publica};
}

std::variant<certificado_leido, fallo_certificado> comprobar_certificado(const std::filesystem::path& ruta) {
  const auto leido = leer_entero(ruta, certificado_maximo);
  if (const auto* causa = std::get_if<causa_archivo>(&leido))
    return fallo_certificado{fallo_certificado::clase::leer, *causa};
  return comprobar_contenido(std::get<std::string>(leido));
}

std::string frase(const fallo_certificado& fallo) {
  using clase = fallo_certificado::clase;
  switch (fallo.cual) {
    case clase::leer:
      return frase(fallo.archivo);
    case clase::no_es:
      return "no es un certificado, o está dañado";
    case clase::cambiado:
    case clase::firma_mala:
      return "lo han cambiado después de firmarlo";
  }
  return {};
}

}  // namespace morvane::console
