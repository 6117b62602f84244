#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

namespace morvane {

/// Owner of a handle of the host, or of none.
class manejador {
 public:
  manejador() = default;
  /// Both values by which the host says that there is none are taken as such.
  explicit manejador(HANDLE h) : h_(h == nullptr ? INVALID_HANDLE_VALUE : h) {}
  manejador(manejador&& otro) noexcept : h_(otro.soltar()) {}
  manejador& operator=(manejador&& otro) noexcept;
  ~manejador() { cerrar(); }

  HANDLE numero() const { return h_; }
  bool abierto() const { return h_ != INVALID_HANDLE_VALUE; }
  HANDLE soltar() { return std::exchange(h_, INVALID_HANDLE_VALUE); }
  void cerrar();

 private:
  HANDLE h_ = INVALID_HANDLE_VALUE;
};

/// The number that <cerrno> has for an error of the host.
int error_de(DWORD error);
/// That of the error that the last call of the host has left.
int ultimo_error();

/// Texts of the host as UTF-8 and back. What is neither becomes U+FFFD.
std::wstring ancho(std::string_view texto);
std::string estrecho(std::wstring_view texto);

/// The form of `ruta` that the host's functions take at any length.
std::wstring ruta_larga(const std::filesystem::path& ruta);

}  // namespace morvane
