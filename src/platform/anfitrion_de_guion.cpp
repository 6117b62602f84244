#include "platform/gemelo.h"

namespace morvane {

std::optional<std::int32_t> anfitrion_de_guion::RegOpenKeyExA(std::int32_t /*raiz*/, const std::string& nombre,
                                                              std::uint32_t /*acceso*/) {
  const auto desde = valores.lower_bound(nombre + "|");
  if (desde == valores.end() || !desde->first.starts_with(nombre + "|")) return std::nullopt;
  clave_ = nombre;
  return ++abiertas;
}

std::optional<valor_registro> anfitrion_de_guion::RegQueryValueExA(std::int32_t /*clave*/, const std::string& nombre,
                                                                   std::size_t cabida) {
  const auto hallado = valores.find(clave_ + "|" + nombre);
  if (hallado == valores.end() || hallado->second.tamano > cabida) return std::nullopt;
  valor_registro valor = hallado->second;
  valor.bytes.resize(cabida);
  return valor;
}

void anfitrion_de_guion::RegCloseKey(std::int32_t /*clave*/) {
  --abiertas;
}

bool anfitrion_de_guion::iniciar(const std::string& ruta) {
  if (!programas.contains(ruta)) return false;
  iniciados.push_back(ruta);
  return true;
}

}  // namespace morvane
