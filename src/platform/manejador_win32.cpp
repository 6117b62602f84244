#include "manejador_win32.h"

#include <algorithm>
#include <array>
#include <cerrno>

#include "platform/rutas.h"
#include "platform/texto.h"

namespace morvane {

namespace fs = std::filesystem;

namespace {

/// From here on a name needs the prefix that lifts the limit; a folder needs room for a short file name besides.
constexpr std::size_t largo_sin_prefijo = 247;

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

manejador& manejador::operator=(manejador&& otro) noexcept {
  if (this == &otro) return *this;
  cerrar();
  h_ = otro.soltar();
  return *this;
}

void manejador::cerrar() {
  if (abierto()) ::CloseHandle(soltar());
}

int error_de(DWORD error) {
  switch (error) {
    case ERROR_SUCCESS:
      return 0;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
      return ENOENT;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
      return EACCES;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
      return EBUSY;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
      return ENOSPC;
    case ERROR_FILENAME_EXCED_RANGE:
      return ENAMETOOLONG;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return EEXIST;
    default:
      return EIO;
  }
}

int ultimo_error() {
  return error_de(::GetLastError());
}

std::wstring ancho(std::string_view texto) {
  if (texto.empty()) return {};
  const int largo = static_cast<int>(texto.size());
  std::wstring otro(static_cast<std::size_t>(::MultiByteToWideChar(CP_UTF8, 0, texto.data(), largo, nullptr, 0)), L' ');
  ::MultiByteToWideChar(CP_UTF8, 0, texto.data(), largo, otro.data(), static_cast<int>(otro.size()));
  return otro;
}

std::string estrecho(std::wstring_view texto) {
  if (texto.empty()) return {};
  const int largo = static_cast<int>(texto.size());
  const int bytes = ::WideCharToMultiByte(CP_UTF8, 0, texto.data(), largo, nullptr, 0, nullptr, nullptr);
  std::string otro(static_cast<std::size_t>(bytes), ' ');
  ::WideCharToMultiByte(CP_UTF8, 0, texto.data(), largo, otro.data(), bytes, nullptr, nullptr);
  return otro;
}

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
