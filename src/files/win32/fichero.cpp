#include <utility>

#include "abrir.h"
#include "files/archivos.h"

namespace morvane {

namespace {

HANDLE manejador_de(std::intptr_t numero) {
  return reinterpret_cast<HANDLE>(numero);
}

}  // namespace

bool fichero::linea(std::string_view texto) {
  if (!abierto()) return false;
  renglon_.assign(texto).append("\r\n");
  const HANDLE archivo = manejador_de(descriptor_);
  LARGE_INTEGER antes{};
  if (::SetFilePointerEx(archivo, {}, &antes, FILE_END) == 0) return false;
  if (escribir_todo(archivo, renglon_) == 0) return true;
  // Half a line would be read as a whole one.
  (void)cortar(archivo, antes.QuadPart);
  return false;
}

void fichero::cerrar() {
  if (abierto()) ::CloseHandle(manejador_de(std::exchange(descriptor_, cerrado)));
}

}  // namespace morvane
