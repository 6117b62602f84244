#include "platform/manejador.h"

#include <cerrno>

namespace morvane {

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

}  // namespace morvane
