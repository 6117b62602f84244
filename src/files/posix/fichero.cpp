#include <unistd.h>

#include <string>
#include <utility>

#include "files/archivos.h"
#include "platform/descriptor.h"

namespace morvane {

bool fichero::linea(std::string_view texto) {
  if (!abierto()) return false;
  renglon_.assign(texto).append("\r\n");
  const int fd = static_cast<int>(descriptor_);
  const off_t antes = ::lseek(fd, 0, SEEK_END);
  if (antes >= 0 && escribir_todo(fd, renglon_) == 0) return true;
  // Half a line would be read as a whole one.
  if (antes >= 0) (void)::ftruncate(fd, antes);
  return false;
}

void fichero::cerrar() {
  if (abierto()) ::close(static_cast<int>(std::exchange(descriptor_, cerrado)));
}

}  // namespace morvane
