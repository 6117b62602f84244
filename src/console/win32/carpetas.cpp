#include "console/carpetas.h"

#include <windows.h>

#include <array>

#include "platform/proceso.h"

namespace morvane::console {

namespace fs = std::filesystem;

namespace {

/// Where the window keeps its own for this user, too.
fs::path carpeta_en_el_perfil() {
  std::array<wchar_t, 32768> valor{};
  const DWORD largo = ::GetEnvironmentVariableW(L"APPDATA", valor.data(), static_cast<DWORD>(valor.size()));
  if (largo == 0 || largo >= valor.size()) return {};
  const fs::path perfil(valor.data());
  return perfil.is_absolute() ? perfil / "morvane" : fs::path();
}

}  // namespace

fs::path carpeta_de_claves() {
  return carpeta_en_el_perfil();
}

fs::path carpeta_del_usuario() {
  fs::path propia = carpeta_del_programa();
  if (se_puede_escribir_en(propia)) return propia;
  fs::path suya = carpeta_en_el_perfil();
  std::error_code error;
  return !suya.empty() && fs::is_directory(suya, error) ? suya : propia;
}

}  // namespace morvane::console
