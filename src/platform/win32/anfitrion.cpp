#include <cstring>

#include "platform/anfitrion_win32.h"
#include "platform/manejador.h"

namespace morvane {

namespace {

/// A handle of the host has no more than 32 bits that count, and its roots are numbers with a sign.
HKEY clave_de(std::int32_t numero) {
  return static_cast<HKEY>(LongToHandle(numero));
}

bool es_texto(DWORD tipo) {
  return tipo == REG_SZ || tipo == REG_EXPAND_SZ || tipo == REG_MULTI_SZ;
}

}  // namespace

std::optional<std::int32_t> anfitrion_win32::RegOpenKeyExA(std::int32_t raiz, const std::string& nombre,
                                                           std::uint32_t /*acceso*/) {
  for (const REGSAM vista : {KEY_WOW64_32KEY, KEY_WOW64_64KEY}) {
    HKEY abierta = nullptr;
    const LSTATUS error = ::RegOpenKeyExW(clave_de(raiz), ancho(nombre).c_str(), 0, KEY_READ | vista, &abierta);
    if (error == ERROR_SUCCESS) return static_cast<std::int32_t>(HandleToLong(abierta));
  }
  return std::nullopt;
}

std::optional<valor_registro> anfitrion_win32::RegQueryValueExA(std::int32_t clave, const std::string& nombre,
                                                                std::size_t cabida) {
  valor_registro valor;
  valor.bytes.resize(cabida * sizeof(wchar_t));
  DWORD tipo = 0, tamano = static_cast<DWORD>(valor.bytes.size());
  const LSTATUS error =
      ::RegQueryValueExW(clave_de(clave), ancho(nombre).c_str(), nullptr, &tipo, valor.bytes.data(), &tamano);
  if (error != ERROR_SUCCESS) return std::nullopt;
  valor.tipo = tipo;
  if (es_texto(tipo)) {
    std::wstring leido(tamano / sizeof(wchar_t), L'\0');
    std::memcpy(leido.data(), valor.bytes.data(), leido.size() * sizeof(wchar_t));
    const std::string texto = estrecho(leido);
    valor.bytes.assign(texto.begin(), texto.end());
    tamano = static_cast<DWORD>(texto.size());
  }
  if (tamano > cabida) return std::nullopt;
  valor.tamano = tamano;
  valor.bytes.resize(cabida);
  return valor;
}

void anfitrion_win32::RegCloseKey(std::int32_t clave) {
  ::RegCloseKey(clave_de(clave));
}

bool anfitrion_win32::existe(const std::string& ruta) {
  return ::GetFileAttributesW(ancho(ruta).c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool anfitrion_win32::iniciar(const std::string& ruta) {
  // Not CreateProcess: such a program may ask for rights that only the desktop can give it.
  SHELLEXECUTEINFOW orden{};
  orden.cbSize = sizeof orden;
  orden.fMask = SEE_MASK_FLAG_NO_UI;
  const std::wstring programa = ancho(ruta);
  orden.lpFile = programa.c_str();
  orden.nShow = SW_SHOWNORMAL;
  return ::ShellExecuteExW(&orden) != 0;
}

std::vector<std::string> anfitrion_win32::programas_de_informacion() {
  return {};
}

}  // namespace morvane
