#include "puertos_win32.h"

#include <setupapi.h>

#include <algorithm>
#include <array>
#include <map>

#include "platform/manejador.h"
#include "serial/puertos.h"

namespace morvane {

namespace fs = std::filesystem;

namespace {

constexpr DWORD cabida = 1024;
/// The class of the ports in the host's list of devices.
constexpr GUID clase_puertos = {0x4D36E978, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}};

std::wstring hasta_el_cero(const std::array<wchar_t, cabida>& texto) {
  return {texto.begin(), std::find(texto.begin(), texto.end(), L'\0')};
}

/// The port that a device of the list stands for, such as COM3; empty if for none.
std::string puerto_de(HDEVINFO lista, SP_DEVINFO_DATA& uno) {
  const HKEY clave = ::SetupDiOpenDevRegKey(lista, &uno, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_READ);
  if (clave == INVALID_HANDLE_VALUE) return {};
  std::array<wchar_t, cabida> nombre{};
  DWORD tamano = sizeof nombre - sizeof(wchar_t);
  ::RegQueryValueExW(clave, L"PortName", nullptr, nullptr, reinterpret_cast<BYTE*>(nombre.data()), &tamano);
  ::RegCloseKey(clave);
  return estrecho(hasta_el_cero(nombre));
}

/// What the devices call themselves, by their ports.
std::map<std::string, std::string> nombres() {
  std::map<std::string, std::string> todos;
  const HDEVINFO lista = ::SetupDiGetClassDevsW(&clase_puertos, nullptr, nullptr, DIGCF_PRESENT);
  if (lista == INVALID_HANDLE_VALUE) return todos;
  SP_DEVINFO_DATA uno{};
  uno.cbSize = sizeof uno;
  for (DWORD i = 0; ::SetupDiEnumDeviceInfo(lista, i, &uno) != 0; ++i) {
    std::array<wchar_t, cabida> nombre{};
    ::SetupDiGetDeviceRegistryPropertyW(lista, &uno, SPDRP_FRIENDLYNAME, nullptr,
                                        reinterpret_cast<BYTE*>(nombre.data()), sizeof nombre - sizeof(wchar_t),
                                        nullptr);
    todos[puerto_de(lista, uno)] = estrecho(hasta_el_cero(nombre));
  }
  ::SetupDiDestroyDeviceInfoList(lista);
  return todos;
}

}  // namespace

fs::path dispositivo_com(int numero) {
  return L"\\\\.\\COM" + std::to_wstring(numero);
}

std::string nombre_de_com(const std::string& puerto) {
  return nombres()[puerto];
}

std::string aparato_tras(int numero) {
  std::array<wchar_t, cabida> destino{};
  const std::wstring nombre = L"COM" + std::to_wstring(numero);
  if (::QueryDosDeviceW(nombre.c_str(), destino.data(), cabida) == 0) return {};
  return estrecho(hasta_el_cero(destino));
}

causa_puerto causa_de_apertura(int numero, DWORD error) {
  using clase = causa_puerto::clase;
  switch (error) {
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_BUSY:
      return {.cual = clase::ocupado, .puerto = numero};
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_DEVICE_NOT_CONNECTED:
    case ERROR_GEN_FAILURE:
      return {.cual = clase::sin_aparato, .puerto = numero};
    case ERROR_INVALID_PARAMETER:
    case ERROR_INVALID_FUNCTION:
    case ERROR_INVALID_HANDLE:
      return {.cual = clase::no_es_serie, .puerto = numero};
    default:
      return {.cual = clase::windows, .puerto = numero, .error = static_cast<int>(error)};
  }
}

std::vector<aparato> aparatos(const fs::path& /*raiz*/) {
  std::map<std::string, std::string> llamados = nombres();
  std::vector<aparato> todos;
  HKEY lista = nullptr;
  if (::RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"HARDWARE\\DEVICEMAP\\SERIALCOMM", 0, KEY_READ, &lista) != ERROR_SUCCESS) {
    return todos;
  }
  for (DWORD i = 0;; ++i) {
    std::array<wchar_t, cabida> valor{}, puerto{};
    DWORD largo = cabida, tamano = sizeof puerto - sizeof(wchar_t);
    const LSTATUS fin = ::RegEnumValueW(lista, i, valor.data(), &largo, nullptr, nullptr,
                                        reinterpret_cast<BYTE*>(puerto.data()), &tamano);
    if (fin != ERROR_SUCCESS) break;
    const std::wstring nombre = hasta_el_cero(puerto);
    const fs::path ruta = L"\\\\.\\" + nombre;
    todos.push_back({ruta, ruta, llamados[estrecho(nombre)]});
  }
  ::RegCloseKey(lista);
  std::ranges::sort(todos, {}, &aparato::dispositivo);
  return todos;
}

descripcion_puerto describir_puerto(const fs::path& /*directorio*/, int numero) {
  const std::string nombre = "COM" + std::to_string(numero);
  descripcion_puerto puerto{.numero = numero, .dispositivo = aparato_tras(numero), .nombre = nombres()[nombre]};
  if (puerto.dispositivo.empty()) puerto.falta = causa_puerto{.puerto = numero};
  return puerto;
}

bool tiene_enlace(const fs::path& /*directorio*/, int /*numero*/) {
  return false;
}

std::optional<causa_puerto> enlazar_puerto(const fs::path& /*directorio*/, int numero, const fs::path& /*destino*/) {
  return causa_puerto{.cual = causa_puerto::clase::numero_fijo, .puerto = numero};
}

std::optional<causa_puerto> quitar_enlace(const fs::path& /*directorio*/, int /*numero*/) {
  return std::nullopt;
}

}  // namespace morvane
