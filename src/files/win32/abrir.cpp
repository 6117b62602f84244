#include "abrir.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include "files/texto.h"
#include "platform/rutas.h"

namespace morvane {

namespace fs = std::filesystem;

namespace {

/// True for the names that lead to a device from any folder, whatever stands behind a dot: CON, COM1.TXT.
bool es_aparato(const fs::path& ruta) {
  const std::string nombre = mayusculas(texto_de(ruta.filename()));
  const std::string_view base = sin_blancos(std::string_view(nombre).substr(0, nombre.find_first_of(".:")));
  constexpr std::array fijos = {"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
  if (std::ranges::find(fijos, base) != fijos.end()) return true;
  const bool numerado = base.size() == 4 && (base.starts_with("COM") || base.starts_with("LPT"));
  return (numerado && base[3] >= '0' && base[3] <= '9') || texto_de(ruta).starts_with("\\\\.\\");
}

}  // namespace

apertura abrir_normal(const fs::path& ruta, DWORD acceso, DWORD disposicion, bool compartido) {
  if (ruta.empty() || ruta.native().find(L'\0') != std::wstring::npos) return {{}, ENOENT};
  if (es_aparato(ruta)) return {{}, ENODEV};
  const std::wstring nombre = ruta_larga(ruta);
  const DWORD que = ::GetFileAttributesW(nombre.c_str());
  const bool existe = que != INVALID_FILE_ATTRIBUTES;
  if (existe && (que & FILE_ATTRIBUTE_DIRECTORY) != 0) return {{}, EISDIR};
  if (existe && (que & FILE_ATTRIBUTE_READONLY) != 0 && (acceso & GENERIC_WRITE) != 0) return {{}, EACCES};
  // To take its place is not to write to it: that goes on.
  const DWORD reparto = FILE_SHARE_READ | FILE_SHARE_DELETE | (compartido ? FILE_SHARE_WRITE : 0);
  manejador archivo(
      ::CreateFileW(nombre.c_str(), acceso, reparto, nullptr, disposicion, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!archivo.abierto()) return {{}, ultimo_error()};
  if (::GetFileType(archivo.numero()) != FILE_TYPE_DISK) return {{}, ENODEV};
  return {std::move(archivo), 0};
}

int escribir_todo(HANDLE archivo, std::string_view datos) {
  constexpr std::size_t de_una_vez = std::size_t{1} << 20;
  while (!datos.empty()) {
    const DWORD cuantos = static_cast<DWORD>(std::min(datos.size(), de_una_vez));
    DWORD hechos = 0;
    if (::WriteFile(archivo, datos.data(), cuantos, &hechos, nullptr) == 0) return ultimo_error();
    if (hechos == 0) return ENOSPC;
    datos.remove_prefix(hechos);
  }
  return 0;
}

bool cortar(HANDLE archivo, std::int64_t largo) {
  LARGE_INTEGER donde{};
  donde.QuadPart = largo;
  return ::SetFilePointerEx(archivo, donde, nullptr, FILE_BEGIN) != 0 && ::SetEndOfFile(archivo) != 0;
}

}  // namespace morvane
