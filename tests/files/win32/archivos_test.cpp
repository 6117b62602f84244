#include "files/archivos.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "apoyo/carpeta.h"
#include "files/lector_lineas.h"
#include "platform/anfitrion_win32.h"
#include "platform/rutas.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using modo = archivos::modo;

class ArchivosWin32 : public testing::Test {
 protected:
  std::string propio(const std::string& nombre) const { return disco.ruta_aplicacion() + nombre; }
  int cuantos_hay() const {
    return static_cast<int>(std::distance(fs::directory_iterator(carpeta.ruta()), fs::directory_iterator()));
  }

  apoyo::carpeta carpeta;
  archivos disco{carpeta.ruta()};
};

TEST_F(ArchivosWin32, NombresConTildesYLargosSeGuardanSeAmplianYSeLeen) {
  std::string honda = propio("Año €");
  for (int i = 0; i <= 8; ++i) {
    if (i > 0) honda += "\\" + std::string(60, 'a');
    ASSERT_NE(::CreateDirectoryW((L"\\\\?\\" + ruta_de(honda).native()).c_str(), nullptr), 0) << i;
  }
  for (const std::string& nombre : {propio("señal 😀.txt"), honda + "\\Niño.txt"}) {
    SCOPED_TRACE(nombre);
    EXPECT_EQ(disco.Dir(nombre), "");
    for (const char* texto : {"viejo", "uno"}) ASSERT_EQ(disco.guardar(nombre, texto), 0);
    EXPECT_EQ(disco.anadir_linea(nombre, "dos\r\n"), 0);
    EXPECT_EQ(disco.leer(nombre), "uno\r\ndos\r\n");
    EXPECT_EQ(disco.Dir(nombre.substr(0, nombre.size() - 3) + "TXT"), nombre.substr(nombre.rfind('\\') + 1));
    lector_lineas lector;
    lector_lineas::linea linea;
    EXPECT_TRUE(lector.abrir(nombre, lector_lineas::finales::cr));
    EXPECT_TRUE(lector.siguiente(linea));
    EXPECT_EQ(linea.texto, "uno");
  }
}

TEST_F(ArchivosWin32, LoQueEstorbaSeDiceYLoViejoQuedaEntero) {
  carpeta.escribir("carpeta/x", "");
  carpeta.escribir("solo.txt", "viejo");
  carpeta.escribir("ajeno.txt", "viejo");
  ::SetFileAttributesW((carpeta.ruta() / "solo.txt").c_str(), FILE_ATTRIBUTE_READONLY);
  const HANDLE ajeno = ::CreateFileW((carpeta.ruta() / "ajeno.txt").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                     OPEN_EXISTING, 0, nullptr);
  const int antes = cuantos_hay();
  fichero f;
  const std::pair<const char*, error_archivo> casos[] = {
      {"carpeta", EISDIR}, {"NUL", ENODEV}, {"com1.txt", ENODEV}, {"no\\hay", ENOENT}, {"solo.txt", EACCES}};
  for (const auto& [nombre, error] : casos) {
    EXPECT_EQ(disco.guardar(propio(nombre), "x"), error) << nombre;
    EXPECT_EQ(disco.abrir(propio(nombre), modo::escribir, f), error) << nombre;
  }
  EXPECT_NE(disco.guardar(propio("ajeno.txt"), "nuevo"), 0) << "somebody else holds it";
  ::CloseHandle(ajeno);
  for (const char* nombre : {"solo.txt", "ajeno.txt"}) EXPECT_EQ(disco.leer(propio(nombre)), "viejo");
  EXPECT_EQ(cuantos_hay(), antes) << "nothing half written is left";
  EXPECT_EQ(disco.Dir(propio("so*.txt")), "") << "a name is no pattern";
  ::SetFileAttributesW((carpeta.ruta() / "solo.txt").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(ArchivosWin32, UnDiarioAbiertoEsDeUnSoloProgramaYLosDemasLoLeen) {
  fichero primero, segundo;
  ASSERT_EQ(disco.abrir(propio("memoria.txt"), modo::escribir, primero), 0);
  EXPECT_TRUE(primero.linea("1"));
  for (const modo m : {modo::escribir, modo::anadir}) EXPECT_EQ(disco.abrir(propio("memoria.txt"), m, segundo), EBUSY);
  EXPECT_EQ(disco.leer(propio("memoria.txt")), "1\r\n");
  primero.cerrar();
  EXPECT_EQ(disco.abrir(propio("memoria.txt"), modo::anadir, segundo), 0);
}

TEST_F(ArchivosWin32, SoloSeBarreLoQueProcesosMuertosDejaronHaceTiempo) {
  const std::string muerto = ".morvane-2147483643-", vivo = ".morvane-" + std::to_string(::GetCurrentProcessId());
  const fs::path reciente = carpeta.escribir(muerto + "1.tmp", "x");
  for (const std::string& uno : {muerto + "0.tmp", vivo + "-9.tmp"}) {
    fs::last_write_time(carpeta.escribir(uno, "x"), fs::last_write_time(reciente) - std::chrono::hours(2));
  }
  ASSERT_EQ(disco.guardar(propio("MENU.TXT"), "x"), 0);
  EXPECT_EQ(cuantos_hay(), 3);
  EXPECT_FALSE(fs::exists(carpeta.ruta() / (muerto + "0.tmp")));
}

TEST(AnfitrionWin32, LaVistaDe32BitsGanaYUnTextoSaleEnUtf8) {
  constexpr const wchar_t* clave = L"Software\\Morvane-prueba";
  const auto poner = [&](REGSAM vista, const wchar_t* texto) {
    HKEY abierta = nullptr;
    ASSERT_EQ(
        ::RegCreateKeyExW(HKEY_LOCAL_MACHINE, clave, 0, nullptr, 0, KEY_ALL_ACCESS | vista, nullptr, &abierta, nullptr),
        ERROR_SUCCESS);
    ::RegSetValueExW(abierta, L"PATH", 0, REG_SZ, reinterpret_cast<const BYTE*>(texto), 2 * (::lstrlenW(texto) + 1));
    ::RegCloseKey(abierta);
  };
  const auto leer = [] {
    anfitrion_win32 maquina;
    const auto abierta = maquina.RegOpenKeyExA(static_cast<std::int32_t>(0x80000002U), "SOFTWARE\\Morvane-prueba", 0);
    if (!abierta) return std::string("-");
    const auto valor = maquina.RegQueryValueExA(*abierta, "PATH", 1024);
    EXPECT_FALSE(maquina.RegQueryValueExA(*abierta, "falta", 1024));
    maquina.RegCloseKey(*abierta);
    return valor ? std::string(valor->bytes.begin(), valor->bytes.begin() + valor->tamano) : "";
  };
  poner(KEY_WOW64_64KEY, L"de 64");
  EXPECT_EQ(leer(), std::string("de 64\0", 6));
  poner(KEY_WOW64_32KEY, L"C:\\Año");
  EXPECT_EQ(leer(), std::string("C:\\Año\0", 8));
  for (const REGSAM vista : {KEY_WOW64_32KEY, KEY_WOW64_64KEY}) {
    ::RegDeleteKeyExW(HKEY_LOCAL_MACHINE, clave, vista, 0);
  }
  EXPECT_EQ(leer(), "-");
}

}  // namespace
}  // namespace morvane
