#include "platform/archivos.h"

#include <sys/stat.h>

#include <chrono>

#include "apoyo/carpeta.h"
#include "apoyo/hijos.h"
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
  g.cerrar();
  ASSERT_EQ(disco.abrir(propio("A.TXT"), modo::escribir, f), 0);
  EXPECT_EQ(carpeta.leer("a.txt"), "");
}

TEST_F(ArchivosPosix, DiscoLlenoEnCadaByteDejaLoViejoEnteroYNuncaMediaLinea) {
  const std::string viejo(20, 'v'), nuevo(40, 'n'), linea = "\"/uno\"\r\n";
  for (rlim_t bytes = 0; bytes <= 45; ++bytes) {
    carpeta.escribir("SETTINGS.TXT", viejo);
    carpeta.escribir("MENU.TXT", viejo);
    fichero f;
    ASSERT_EQ(disco.abrir(propio("memoria.txt"), modo::escribir, f), 0);
    error_archivo guardado = 0, anadido = 0;
    std::string escritas;
    {
      const apoyo::disco_lleno tope(bytes);
      guardado = disco.guardar(propio("SETTINGS.TXT"), nuevo);
      anadido = disco.anadir_linea(propio("menu.txt"), linea);
      while (escritas.size() < 45 && f.linea("1234")) escritas += "1234\r\n";
    }
    EXPECT_EQ(guardado, bytes < 40 ? EFBIG : 0) << bytes;
    EXPECT_EQ(carpeta.leer("SETTINGS.TXT"), bytes < 40 ? viejo : nuevo) << bytes;
    EXPECT_EQ(anadido == 0, bytes >= 30) << bytes;
    EXPECT_EQ(carpeta.leer("MENU.TXT"), bytes < 30 ? viejo : viejo + "\r\n" + linea) << bytes;
    EXPECT_EQ(carpeta.leer("memoria.txt"), escritas) << bytes;
    EXPECT_EQ(escritas.size(), bytes / 6 * 6) << bytes;
    EXPECT_EQ(cuantos(), 3);
  }
}

TEST_F(ArchivosPosix, UnSegundoProgramaNoVaciaElDiarioDelPrimero) {
  fichero primero, segundo;
  ASSERT_EQ(disco.abrir(propio("memoria.txt"), modo::escribir, primero), 0);
  EXPECT_TRUE(primero.linea("1"));
  for (const modo m : {modo::escribir, modo::anadir}) EXPECT_EQ(disco.abrir(propio("memoria.txt"), m, segundo), EBUSY);
  EXPECT_EQ(disco.abrir(propio("memoria.txt"), modo::leer, segundo), 0);
  EXPECT_TRUE(primero.linea("2"));
  EXPECT_EQ(carpeta.leer("memoria.txt"), "1\r\n2\r\n");
  // Whatever else may empty it, what follows is text.
  fs::resize_file(ruta("memoria.txt"), 0);
  EXPECT_TRUE(primero.linea("3"));
  EXPECT_EQ(carpeta.leer("memoria.txt"), "3\r\n");
  primero.cerrar();
  EXPECT_EQ(disco.abrir(propio("memoria.txt"), modo::escribir, segundo), 0);
}

TEST_F(ArchivosPosix, UnTurnoQueNoAcabaNoDetieneANadie) {
  int hechos = 0;
  disco.por_turno(propio("MENU.TXT"), [&] {
    disco.por_turno(
        propio("MENU.TXT"), [&] { ++hechos; }, std::chrono::milliseconds(20));
  });
  disco.por_turno("no\\hay\\MENU.TXT", [&] { ++hechos; });
  EXPECT_EQ(hechos, 2);
}

TEST_F(ArchivosPosix, SoloSeBarreLoQueProcesosMuertosDejaronHaceTiempo) {
  const pid_t muerto = apoyo::en_un_hijo([] {});
  ASSERT_EQ(::waitpid(muerto, nullptr, 0), muerto);
  const auto de = [](pid_t pid) { return ".morvane-" + std::to_string(pid) + "-0.tmp"; };
  const struct {
    std::string nombre;
    bool viejo, queda;
  } casos[] = {
      {de(muerto), true, false},
      {".morvane-" + std::to_string(muerto) + "-17.tmp", true, false},
      {de(::getpid()), true, false},
      {".morvane-" + std::to_string(muerto) + "-1.tmp", false, true},
      {de(::getppid()), true, true},
      {de(1), true, true},
      {de(0), true, true},
      {de(-7), true, true},
      {"x" + de(muerto), true, true},
      {de(muerto) + "x", true, true},
      {".morvane-" + std::to_string(muerto) + ".tmp", true, true},
      {".morvane-99999999999999999999-0.tmp", true, true},
      {".morvane-carpeta-0.tmp/" + de(muerto), true, true},
      {".morvane-" + std::to_string(muerto) + "-2.tmp/dentro", true, true},
  };
  const auto hora = fs::file_time_type::clock::now();
  for (const auto& c : casos) {
    carpeta.escribir(c.nombre, "x");
    if (c.viejo) fs::last_write_time(ruta(c.nombre), hora - std::chrono::hours(2));
  }
  for (const auto& uno : fs::directory_iterator(carpeta.ruta())) {
    if (uno.is_directory()) fs::last_write_time(uno.path(), hora - std::chrono::hours(2));
  }
  ASSERT_EQ(disco.guardar(propio("MENU.TXT"), "x"), 0);
  for (const auto& c : casos) EXPECT_EQ(fs::exists(ruta(c.nombre)), c.queda) << c.nombre;
}

}  // namespace
}  // namespace morvane
