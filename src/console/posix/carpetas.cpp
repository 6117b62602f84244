#include "console/carpetas.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/proceso.h"

namespace morvane::console {

namespace fs = std::filesystem;

namespace {

constexpr const char* carpeta_propia = "morvane";

/// Only a whole path counts.
fs::path ruta_en(const char* variable) {
  const char* valor = std::getenv(variable);
  return valor != nullptr && *valor == '/' ? fs::path(valor) : fs::path();
}

fs::path casa() {
  if (fs::path ruta = ruta_en("HOME"); !ruta.empty()) return ruta;
  const passwd* yo = ::getpwuid(::geteuid());
  return yo != nullptr && yo->pw_dir != nullptr && *yo->pw_dir == '/' ? fs::path(yo->pw_dir) : fs::path();
}

/// What `variable` names, else `bajo_casa` in the user's folder.
fs::path carpeta_en(const char* variable, const char* bajo_casa) {
  if (const fs::path ruta = ruta_en(variable); !ruta.empty()) return ruta / carpeta_propia;
  const fs::path suya = casa();
  return suya.empty() ? fs::path() : suya / bajo_casa / carpeta_propia;
}

}  // namespace

fs::path carpeta_de_claves() {
  return carpeta_en("XDG_CONFIG_HOME", ".config");
}

fs::path carpeta_del_usuario() {
  fs::path propia = carpeta_del_programa();
  if (se_puede_escribir_en(propia)) return propia;
  fs::path suya = carpeta_en("XDG_DATA_HOME", ".local/share");
  std::error_code error;
  return !suya.empty() && fs::is_directory(suya, error) ? suya : propia;
}

}  // namespace morvane::console
