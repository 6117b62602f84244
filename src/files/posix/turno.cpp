#include <fcntl.h>

#include <thread>

#include "files/archivos.h"
#include "platform/descriptor.h"

namespace morvane {

void archivos::por_turno(std::string_view nombre, const std::function<void()>& trabajo,
                         std::chrono::milliseconds paciencia) const {
  constexpr std::chrono::milliseconds entre_intentos{5};
  const std::filesystem::path padre = anfitrion(nombre).parent_path();
  const descriptor carpeta(::open(padre.empty() ? "." : padre.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (carpeta.abierto()) {
    while (!bloquear(carpeta.numero()) && paciencia > entre_intentos) {
      std::this_thread::sleep_for(entre_intentos);
      paciencia -= entre_intentos;
    }
  }
  trabajo();
}

}  // namespace morvane
