#include "platform/archivos.h"

#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "apoyo/carpeta.h"
#include "platform/sin_privilegios.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using modo = archivos::modo;

class ArchivosPosix : public testing::Test {
 protected:
  std::string propio(const std::string& nombre) const { return disco.ruta_aplicacion() + nombre; }
  fs::path ruta(const std::string& nombre) const { return carpeta.ruta() / nombre; }
  /// Number of files and folders directly in a folder.
  auto cuantos(const std::string& nombre = ".") const {
    return std::distance(fs::directory_iterator(ruta(nombre)), fs::directory_iterator());
  }
  /// Makes what is no file: "carpeta", "tubo", "circulo", "colgado".
  void poner_estorbos() const {
    fs::create_directory(ruta("carpeta"));
    ASSERT_EQ(::mkfifo(ruta("tubo").c_str(), 0600), 0);
    fs::create_symlink("circulo", ruta("circulo"));
    fs::create_symlink("nada", ruta("colgado"));
  }

  apoyo::carpeta carpeta;
  archivos disco{carpeta.ruta()};
};

TEST_F(ArchivosPosix, NombresDelSistemaYDelAnfitrion) {
  carpeta.escribir("settings.Txt", "1");
  carpeta.escribir("unidades/c/datos/TORVAX/Memoria.txt", "2");
  for (const char* nombre : {"Ñ.txt", "uno.TXT", "uNO.txt", "Uno.txt", "UNo.txt", "UNO.txt", "UnO.txt", "unO.txt"})
    carpeta.escribir(nombre, "");
  poner_estorbos();
  const std::pair<std::string, const char*> casos[] = {
      {propio("SETTINGS.TXT"), "settings.Txt"},
      {"C:\\Datos\\Torvax\\memoria.txt", "Memoria.txt"},
      {ruta("SETTINGS.txt").string(), "settings.Txt"},
      {propio("Ñ.TXT"), "Ñ.txt"},
      {propio("ñ.TXT"), ""},
      {propio("UNO.TXT"), "UNO.txt"},
      {propio("SETTINGS.TX"), ""},
      {propio("CARPETA"), ""},
      {propio("colgado"), ""},
      {propio(""), ""},
      {propio("no\\hay"), ""},
      {propio(std::string("settings.Txt\0x", 14)), ""},
  };
  EXPECT_EQ(archivos("/x/").ruta_aplicacion(), "\\x\\");
  EXPECT_EQ(archivos("/x/y").ruta_aplicacion(), "\\x\\y\\");
  EXPECT_EQ(disco.anfitrion("d:\\\\Datos\\m.txt"), ruta("unidades/d/Datos/m.txt"));
  EXPECT_EQ(disco.anfitrion("/tmp/a\\b.s19"), "/tmp/a\\b.s19");
  for (const auto& [nombre, hallado] : casos) EXPECT_EQ(disco.Dir(nombre), hallado) << nombre;
  EXPECT_EQ(disco.leer(propio("SETTINGS.TXT")), "1");
  carpeta.escribir("SETTINGS.TXT", "3");
  EXPECT_EQ(disco.leer(propio("SETTINGS.TXT")), "3");
}

TEST_F(ArchivosPosix, LeerSoloArchivosNormalesHastaSuLimite) {
  const std::string entero(100'000, 'x');
  carpeta.escribir("largo", entero);
  poner_estorbos();
  EXPECT_EQ(disco.leer(propio("largo"), entero.size()), entero);
  EXPECT_EQ(disco.leer(propio("largo"), entero.size() - 1), std::nullopt);
  for (const char* otro : {"falta", "tubo", "."}) EXPECT_EQ(disco.leer(propio(otro)), std::nullopt) << otro;
}

TEST_F(ArchivosPosix, GuardarConservaNombreModoYEnlace) {
  const std::string nuevo("nue\0vo", 6);
  fs::permissions(carpeta.escribir("datos/real.txt", "viejo"), fs::perms(0666));
  fs::create_symlink("datos/real.txt", ruta("menu.txt"));
  ASSERT_EQ(disco.guardar(propio("MENU.TXT"), nuevo), 0);
  EXPECT_TRUE(fs::is_symlink(ruta("menu.txt")));
  EXPECT_EQ(carpeta.leer("datos/real.txt"), nuevo);
  EXPECT_EQ(fs::status(ruta("datos/real.txt")).permissions(), fs::perms(0666));
  EXPECT_EQ(cuantos("datos"), 1) << "the new file on its way has gone";
  poner_estorbos();
  const mode_t mascara = ::umask(027);
  EXPECT_EQ(disco.guardar(propio("colgado"), "a"), 0);
  ::umask(mascara);
  EXPECT_EQ(carpeta.leer("nada"), "a");
  EXPECT_EQ(fs::status(ruta("nada")).permissions(), fs::perms(0640));
}

TEST_F(ArchivosPosix, GuardarOAbrirDondeNoSePuede) {
  poner_estorbos();
  const std::tuple<const char*, error_archivo, error_archivo> casos[] = {
      {"carpeta", EISDIR, EISDIR}, {"tubo", ENODEV, ENODEV}, {"circulo", ELOOP, ELOOP},
      {"no\\hay", ENOENT, ENOENT}, {"", EISDIR, EISDIR},     {"falta", 0, ENOENT},
  };
  fichero f;
  for (const auto& [nombre, al_guardar, al_abrir] : casos) {
    EXPECT_EQ(disco.abrir(propio(nombre), modo::leer, f), al_abrir) << nombre;
    EXPECT_EQ(disco.abrir(propio(nombre), modo::anadir, f), al_abrir) << nombre;
    EXPECT_EQ(disco.guardar(propio(nombre), "x"), al_guardar) << nombre;
    EXPECT_EQ(disco.abrir(propio(nombre), modo::escribir, f), al_guardar) << nombre;
  }
  EXPECT_EQ(cuantos(), 5);
  fs::permissions(carpeta.escribir("carpeta/menu.txt", "viejo"), fs::perms(0444));
  fs::permissions(ruta("carpeta"), fs::perms(0777));
  fs::permissions(carpeta.ruta(), fs::perms(0755));
  sin_privilegios guarda;
  EXPECT_EQ(disco.guardar(propio("carpeta\\menu.txt"), "nuevo"), EACCES) << "what is read-only stays so";
}

TEST_F(ArchivosPosix, LineasSegunElModo) {
  fichero f;
  EXPECT_FALSE(f.linea("x"));
  ASSERT_EQ(disco.abrir(propio("a.txt"), modo::escribir, f), 0);
  EXPECT_TRUE(f.linea("uno"));
  EXPECT_EQ(carpeta.leer("a.txt"), "uno\r\n");
  ASSERT_EQ(disco.abrir(propio("A.TXT"), modo::anadir, f), 0);
  fichero g(std::move(f));
  EXPECT_TRUE(g.linea("dos\n"));
  EXPECT_EQ(carpeta.leer("a.txt"), "uno\r\ndos\n\r\n");
  ASSERT_EQ(disco.abrir(propio("A.TXT"), modo::leer, f), 0);
  EXPECT_FALSE(f.linea("tres"));
  ASSERT_EQ(disco.abrir(propio("A.TXT"), modo::escribir, f), 0);
  EXPECT_EQ(carpeta.leer("a.txt"), "");
}

TEST_F(ArchivosPosix, DiscoLlenoDejaElArchivoViejoEnteroYUnaLineaLoDice) {
  carpeta.escribir("SETTINGS.TXT", "viejo");
  carpeta.escribir("MENU.TXT", std::string(90, 'v'));
  fichero f;
  ASSERT_EQ(disco.abrir(propio("memoria.txt"), modo::escribir, f), 0);
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit de_antes{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &de_antes), 0);
  const rlimit tope{100, de_antes.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &tope), 0);
  const error_archivo error = disco.guardar(propio("SETTINGS.TXT"), std::string(101, 'n'));
  const error_archivo demasiado = disco.anadir_linea(propio("menu.txt"), std::string(9, 'n'));
  const std::string tras_el_fallo = carpeta.leer("MENU.TXT");
  const error_archivo justo = disco.anadir_linea(propio("menu.txt"), std::string(8, 'n'));
  const bool primera = f.linea("123"), segunda = f.linea(std::string(94, 'n'));
  ::setrlimit(RLIMIT_FSIZE, &de_antes);
  EXPECT_EQ(error, EFBIG);
  EXPECT_EQ(demasiado, ENOSPC);
  EXPECT_EQ(tras_el_fallo, std::string(90, 'v')) << "half a line would be read as a path";
  EXPECT_EQ(justo, 0);
  EXPECT_EQ(carpeta.leer("MENU.TXT"), std::string(90, 'v') + "\r\n" + std::string(8, 'n'));
  EXPECT_TRUE(primera && !segunda);
  EXPECT_EQ(carpeta.leer("SETTINGS.TXT"), "viejo");
  EXPECT_EQ(cuantos(), 3);
}

}  // namespace
}  // namespace morvane
