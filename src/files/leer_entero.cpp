#include "files/fichero_entero.h"
#include "lectura.h"
#include "platform/rutas.h"

namespace morvane {

std::variant<std::string, causa_archivo> leer_entero(const std::filesystem::path& ruta, std::uint64_t limite) {
  lectura archivo;
  if (const int error = archivo.abrir(texto_de(ruta))) return causa_de_lectura(error);
  if (archivo.tamano() > limite) return causa_archivo{causa_archivo::clase::demasiado_grande, 0, limite};
  // One more than there should be, so that a file that has grown is seen.
  std::string contenido(archivo.tamano() + 1, '\0');
  std::size_t hay = 0;
  for (std::int64_t hechos = 1; hechos > 0 && hay < contenido.size(); hay += static_cast<std::size_t>(hechos)) {
    hechos = archivo.leer(contenido.data() + hay, contenido.size() - hay);
    if (hechos < 0) return causa_de_lectura(archivo.error());
  }
  if (hay != archivo.tamano() || !archivo.sigue_igual()) return causa_archivo{causa_archivo::clase::ha_cambiado};
  contenido.resize(hay);
  return contenido;
}

}  // namespace morvane
