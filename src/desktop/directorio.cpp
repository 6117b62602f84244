#include "desktop/directorio.h"

#include <QStandardPaths>

#include "conversiones.h"
#include "files/archivos.h"
#include "platform/proceso.h"
#include "platform/rutas.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

fs::path del_usuario() {
  return ruta_qt(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
}

void hacer_escribible(const fs::path& raiz) {
  fs::permissions(raiz, fs::perms::owner_write, fs::perm_options::add);
  for (const auto& uno : fs::recursive_directory_iterator(raiz)) {
    if (!uno.is_symlink()) fs::permissions(uno.path(), fs::perms::owner_write, fs::perm_options::add);
  }
}

/// A link to a pseudo-terminal is good for one run of a simulated board; later the number may be anybody's.
void quitar_puertos_pasajeros(const fs::path& puertos) {
  if (!fs::exists(puertos)) return;
  for (const auto& uno : fs::directory_iterator(puertos)) {
    if (uno.is_symlink() && fs::read_symlink(uno.path()).parent_path() == "/dev/pts") fs::remove(uno.path());
  }
}

/// As `sembrar`, by the one program that has the turn.
void llenar(const fs::path& origen, const fs::path& destino) {
  if (fs::exists(destino)) return;
  // Filled under another name, so that an interrupted first start leaves nothing half done.
  fs::path nuevo = destino;
  nuevo += ".nuevo";
  fs::remove_all(nuevo);
  fs::create_directories(nuevo);
  for (const char* parte : {"SETTINGS.TXT", "puertos", "unidades", "muestras"}) {
    if (!fs::exists(origen / parte)) continue;
    fs::copy(origen / parte, nuevo / parte, fs::copy_options::recursive | fs::copy_options::copy_symlinks);
  }
  quitar_puertos_pasajeros(nuevo / "puertos");
  hacer_escribible(nuevo);
  fs::rename(nuevo, destino);
}

}  // namespace

void sembrar(const fs::path& origen, const fs::path& destino) {
  fs::create_directories(destino.parent_path());
  const archivos vecinos(destino.parent_path());
  // A second program that starts at the same moment waits until the first has finished.
  vecinos.por_turno(
      texto_de(destino), [&] { llenar(origen, destino); }, std::chrono::seconds(10));
}

fs::path directorio_aplicacion() {
  fs::path propio = carpeta_del_programa();
  if (se_puede_escribir_en(propio)) return propio;
  fs::path usuario = del_usuario();
  try {
    sembrar(propio, usuario);
    return usuario;
  } catch (const fs::filesystem_error& fallo) {
    decir_por_errores(std::string("morvane: ") + fallo.what());
    return propio;
  }
}

}  // namespace morvane
