#include "platform/manejador.h"
#include "puertos_win32.h"
#include "serial/adaptador.h"

namespace morvane {

adaptador adaptador_de(const std::filesystem::path& dispositivo, const std::filesystem::path& /*raiz*/) {
  return {.fabricante = {},
          .producto = nombre_de_com(estrecho(dispositivo.filename().wstring())),
          .serie = {},
          .identidad = {},
          .conductor = {},
          .retencion_ms = {}};
}

}  // namespace morvane
