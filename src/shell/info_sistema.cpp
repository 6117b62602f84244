#include <algorithm>

#include "files/texto.h"
#include "shell/frm_about.h"

namespace morvane {

namespace {

constexpr auto HKEY_LOCAL_MACHINE = static_cast<std::int32_t>(0x80000002U);
constexpr std::uint32_t acceso_de_lectura = 0x2003F;
constexpr std::size_t cabida_del_valor = 1024;
constexpr std::uint32_t REG_SZ = 1, REG_DWORD = 4;

/// The bytes of a value that count: without the zero that may close a string.
std::string bytes_utiles(const valor_registro& valor) {
  std::size_t tamano = std::min<std::size_t>(valor.tamano, valor.bytes.size());
  if (tamano > 0 && valor.bytes[tamano - 1] == 0) --tamano;
  return {valor.bytes.begin(), valor.bytes.begin() + static_cast<std::ptrdiff_t>(tamano)};
}

/// The number whose bytes stand in `bytes`, lowest first: each as hexadecimal digits without zero fill, joined.
std::string numero_decimal(const std::string& bytes) {
  std::string digitos;
  for (auto b = bytes.rbegin(); b != bytes.rend(); ++b) digitos += hex(static_cast<std::uint8_t>(*b));
  return std::to_string(static_cast<std::int32_t>(valor_hex(digitos)));
}

/// The path of the program that the registry names; empty if it names none that is there.
std::string programa_del_registro(anfitrion& maquina) {
  std::string ruta;
  if (GetKeyValue(maquina, HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Shared Tools\\MSINFO", "PATH", ruta)) return ruta;
  if (!GetKeyValue(maquina, HKEY_LOCAL_MACHINE, "SOFTWARE\\Microsoft\\Shared Tools Location", "MSINFO", ruta))
    return {};
  ruta += "\\MSINFO32.EXE";
  return maquina.existe(ruta) ? ruta : std::string();
}

bool iniciar_alguno(anfitrion& maquina) {
  const std::string ruta = programa_del_registro(maquina);
  if (!ruta.empty()) return maquina.iniciar(ruta);
  const auto propios = maquina.programas_de_informacion();
  return std::ranges::any_of(propios, [&maquina](const std::string& otra) { return maquina.iniciar(otra); });
}

}  // namespace

bool GetKeyValue(anfitrion& maquina, std::int32_t KeyRoot, const std::string& KeyName, const std::string& SubKeyRef,
                 std::string& KeyVal) {
  const auto clave = maquina.RegOpenKeyExA(KeyRoot, KeyName, acceso_de_lectura);
  const auto valor = clave ? maquina.RegQueryValueExA(*clave, SubKeyRef, cabida_del_valor) : std::nullopt;
  if (clave) maquina.RegCloseKey(*clave);
  if (!valor) {
    KeyVal.clear();
    return false;
  }
  const std::string bytes = bytes_utiles(*valor);
  if (valor->tipo == REG_SZ) KeyVal = bytes;
  if (valor->tipo == REG_DWORD) KeyVal = numero_decimal(bytes);
  return true;
}

void StartSysInfo(plataforma& plat) {
  if (iniciar_alguno(plat.maquina())) return;
  plat.MsgBox({"", "La información del sistema no está disponible en este momento"});
}

}  // namespace morvane
