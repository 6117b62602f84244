#include "desktop/directorio.h"

#include <unistd.h>

#include <QFile>
#include <QStandardPaths>
#include <cstdio>

namespace morvane {
namespace {

namespace fs = std::filesystem;

fs::path del_usuario() {
  return QFile::encodeName(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)).toStdString();
}

void hacer_escribible(const fs::path& raiz) {
  fs::permissions(raiz, fs::perms::owner_write, fs::perm_options::add);
  for (const auto& uno : fs::recursive_directory_iterator(raiz)) {
    if (!uno.is_symlink()) fs::permissions(uno.path(), fs::perms::owner_write, fs::perm_options::add);
  }
}

}  // namespace

void sembrar(const fs::path& origen, const fs::path& destino) {
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
  hacer_escribible(nuevo);
  fs::rename(nuevo, destino);
}

fs::path directorio_aplicacion() {
  fs::path propio = fs::read_symlink("/proc/self/exe").parent_path();
  if (access(propio.c_str(), W_OK) == 0) return propio;
  fs::path usuario = del_usuario();
  try {
    sembrar(propio, usuario);
    return usuario;
  } catch (const fs::filesystem_error& fallo) {
    std::fprintf(stderr, "morvane: %s\n", fallo.what());
    return propio;
  }
}

}  // namespace morvane
