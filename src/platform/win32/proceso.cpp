#include "platform/proceso.h"

#include <cstdio>

#include "platform/manejador.h"

namespace morvane {

struct peticiones_de_fin::fuente {};

std::filesystem::path carpeta_del_programa() {
  std::wstring ruta(MAX_PATH, L'\0');
  // A path that does not fit comes cut off, as long as there is room.
  for (DWORD largo = 0; (largo = ::GetModuleFileNameW(nullptr, ruta.data(), static_cast<DWORD>(ruta.size()))) != 0;) {
    if (largo < ruta.size()) return std::filesystem::path(ruta.substr(0, largo)).parent_path();
    ruta.resize(2 * ruta.size());
  }
  return std::filesystem::current_path();
}

bool se_puede_escribir_en(const std::filesystem::path& carpeta) {
  // What a folder's attributes say is not what its owner may do: only making a file tells.
  const std::wstring nombre = L".prueba-" + std::to_wstring(::GetCurrentProcessId()) + L".tmp";
  const std::wstring prueba = ruta_larga(carpeta / nombre);
  const manejador hecho(::CreateFileW(prueba.c_str(), GENERIC_WRITE, FILE_SHARE_DELETE, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
  return hecho.abierto();
}

void decir_por_errores(std::string texto) {
  texto += '\n';
  std::fputs(texto.c_str(), stderr);
}

peticiones_de_fin::peticiones_de_fin() = default;
peticiones_de_fin::~peticiones_de_fin() = default;

std::jthread peticiones_de_fin::escuchar(std::function<void()> /*atender*/) const {
  return {};
}

}  // namespace morvane
