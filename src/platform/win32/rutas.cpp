#include "platform/rutas.h"

#include "platform/manejador.h"

namespace morvane {

namespace fs = std::filesystem;

namespace {

/// From here on a name needs the prefix that lifts the limit; a folder needs room for a short file name besides.
constexpr std::size_t largo_sin_prefijo = 247;

}  // namespace

fs::path ruta_de(std::string_view nombre) {
  return ancho(nombre);
}

std::string texto_de(const fs::path& ruta) {
  return estrecho(ruta.native());
}

fs::path ruta_de_url(std::string_view parte) {
  // In front of a drive stands a slash that is none of the path: "/C:/Datos".
  const bool unidad = parte.size() > 2 && parte[0] == '/' && parte[2] == ':';
  return ruta_de(parte.substr(unidad ? 1 : 0));
}

std::wstring ruta_larga(const fs::path& ruta) {
  const std::wstring& tal_cual = ruta.native();
  if (tal_cual.starts_with(L"\\\\?\\")) return tal_cual;
  const DWORD cabida = ::GetFullPathNameW(tal_cual.c_str(), 0, nullptr, nullptr);
  std::wstring entera(cabida, L'\0');
  entera.resize(::GetFullPathNameW(tal_cual.c_str(), cabida, entera.data(), nullptr));
  if (entera.size() <= largo_sin_prefijo) return tal_cual;
  return entera.starts_with(L"\\\\") ? L"\\\\?\\UNC" + entera.substr(1) : L"\\\\?\\" + entera;
}

}  // namespace morvane
