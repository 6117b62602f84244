#include "platform/archivos.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <cerrno>
#include <csignal>
#include <functional>
#include <utility>

#include "platform/carpeta_temporal.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using prueba::carpeta_temporal;
using prueba::contenido_de;
using modo = archivos::modo;

class ArchivosPosix : public testing::Test {
 protected:
  std::string propio(const std::string& nombre) const { return disco.ruta_aplicacion() + nombre; }
  fs::path ruta(const std::string& nombre) const { return carpeta.ruta() / nombre; }

  carpeta_temporal carpeta;
  archivos disco{carpeta.ruta()};
};

TEST_F(ArchivosPosix, NombresDelSistemaYDelAnfitrion) {
  EXPECT_TRUE(disco.ruta_aplicacion().ends_with('\\'));
  EXPECT_EQ(disco.ruta_aplicacion().find('/'), std::string::npos);
  EXPECT_EQ(disco.anfitrion(propio("SETTINGS.TXT")), ruta("SETTINGS.TXT"));
  EXPECT_EQ(disco.anfitrion(propio("a\\b.txt")), ruta("a/b.txt"));
  EXPECT_EQ(disco.anfitrion("C:\\Datos\\m.txt"), ruta("unidades/c/Datos/m.txt"));
  EXPECT_EQ(disco.anfitrion("d:\\\\m.txt"), ruta("unidades/d/m.txt"));
  EXPECT_EQ(disco.anfitrion("/tmp/a\\b.s19"), fs::path("/tmp/a\\b.s19"));
  EXPECT_EQ(archivos("/x/").ruta_aplicacion(), "\\x\\");
}

TEST_F(ArchivosPosix, DirEncuentraSinMirarLaCaja) {
  carpeta.escribir("settings.Txt", "1");
  carpeta.escribir("unidades/c/datos/TORVAX/Memoria.txt", "2");
  fs::create_directory(ruta("carpeta"));
  fs::create_symlink("nada", ruta("colgado"));
  EXPECT_EQ(disco.Dir(propio("SETTINGS.TXT")), "settings.Txt");
  EXPECT_EQ(disco.leer(propio("SETTINGS.TXT")), "1");
  EXPECT_EQ(disco.Dir("C:\\Datos\\Torvax\\memoria.txt"), "Memoria.txt");
  EXPECT_EQ(disco.Dir(carpeta.ruta().native() + "/SETTINGS.txt"), "settings.Txt");
  for (const char* falta : {"SETTINGS.TX", "SETTINGS.TXT2", "carpeta", "CARPETA", "colgado", "", "no\\hay"}) {
    EXPECT_EQ(disco.Dir(propio(falta)), "") << falta;
  }
  EXPECT_EQ(disco.Dir(propio(std::string("settings.Txt\0x", 14))), "");
  carpeta.escribir("SETTINGS.TXT", "3");
  EXPECT_EQ(disco.leer(propio("SETTINGS.TXT")), "3");
  EXPECT_EQ(disco.leer(propio("settings.Txt")), "1");
}

TEST_F(ArchivosPosix, DirNoDoblaLetrasQueNoSonAscii) {
  carpeta.escribir("Ñ.txt", "");
  EXPECT_EQ(disco.Dir(propio("Ñ.TXT")), "Ñ.txt");
  EXPECT_EQ(disco.Dir(propio("ñ.TXT")), "");
}

TEST_F(ArchivosPosix, LeerSoloArchivosNormalesHastaSuLimite) {
  const std::string entero(100'000, 'x');
  carpeta.escribir("largo", entero);
  carpeta.escribir("vacio", "");
  ASSERT_EQ(::mkfifo(ruta("tubo").c_str(), 0600), 0);
  EXPECT_EQ(disco.leer(propio("largo"), entero.size()), entero);
  EXPECT_EQ(disco.leer(propio("largo"), entero.size() - 1), std::nullopt);
  EXPECT_EQ(disco.leer(propio("vacio"), 0), "");
  for (const char* otro : {"falta", "tubo", ".", ""}) EXPECT_EQ(disco.leer(propio(otro)), std::nullopt) << otro;
  EXPECT_EQ(disco.leer("/dev/zero"), std::nullopt);
}

TEST_F(ArchivosPosix, GuardarConservaNombreModoYEnlace) {
  carpeta.escribir("datos/real.txt", "viejo");
  fs::permissions(ruta("datos/real.txt"), fs::perms(0666));
  fs::create_symlink("datos/real.txt", ruta("menu.txt"));
  ASSERT_EQ(disco.guardar(propio("MENU.TXT"), std::string("nue\0vo", 6)), 0);
  EXPECT_TRUE(fs::is_symlink(ruta("menu.txt")));
  EXPECT_EQ(contenido_de(ruta("datos/real.txt")), std::string("nue\0vo", 6));
  EXPECT_EQ(fs::status(ruta("datos/real.txt")).permissions(), fs::perms(0666));
  EXPECT_EQ(std::distance(fs::directory_iterator(ruta("datos")), fs::directory_iterator()), 1);
  EXPECT_EQ(carpeta.cuantos(), 2);
}

TEST_F(ArchivosPosix, GuardarCreaTambienTrasUnEnlaceColgado) {
  fs::create_symlink("luego.txt", ruta("menu.txt"));
  ASSERT_EQ(disco.guardar(propio("menu.txt"), "a"), 0);
  EXPECT_EQ(contenido_de(ruta("luego.txt")), "a");
  const mode_t mascara = ::umask(027);
  const int error = disco.guardar(propio("otro.txt"), "b");
  ::umask(mascara);
  ASSERT_EQ(error, 0);
  EXPECT_EQ(fs::status(ruta("otro.txt")).permissions(), fs::perms(0640));
}

TEST_F(ArchivosPosix, GuardarDondeNoSePuede) {
  fs::create_directory(ruta("carpeta"));
  fs::create_symlink("circulo", ruta("circulo"));
  ASSERT_EQ(::mkfifo(ruta("tubo").c_str(), 0600), 0);
  EXPECT_EQ(disco.guardar(propio("carpeta"), "x"), EISDIR);
  EXPECT_EQ(disco.guardar(propio("circulo"), "x"), ELOOP);
  EXPECT_EQ(disco.guardar(propio("tubo"), "x"), ENODEV);
  EXPECT_EQ(disco.guardar(propio("no\\hay"), "x"), ENOENT);
  EXPECT_EQ(disco.guardar(propio(""), "x"), EISDIR);
  EXPECT_EQ(carpeta.cuantos(), 3);
}

TEST_F(ArchivosPosix, GuardarRespetaUnArchivoDeSoloLectura) {
  fs::permissions(carpeta.ruta(), fs::perms(0777));
  fs::permissions(carpeta.escribir("menu.txt", "viejo"), fs::perms(0444));
  {
    prueba::sin_privilegios guarda;
    EXPECT_EQ(disco.guardar(propio("menu.txt"), "nuevo"), EACCES);
  }
  EXPECT_EQ(contenido_de(ruta("menu.txt")), "viejo");
  EXPECT_EQ(carpeta.cuantos(), 1);
}

TEST_F(ArchivosPosix, AbrirSegunElModo) {
  fichero f;
  EXPECT_EQ(disco.abrir(propio("a.txt"), modo::leer, f), ENOENT);
  EXPECT_EQ(disco.abrir(propio("a.txt"), modo::anadir, f), ENOENT);
  EXPECT_EQ(disco.abrir("C:\\Datos\\a.txt", modo::escribir, f), ENOENT);
  EXPECT_FALSE(f.abierto());
  EXPECT_FALSE(f.linea("x"));
  ASSERT_EQ(disco.abrir(propio("a.txt"), modo::escribir, f), 0);
  EXPECT_TRUE(f.linea("uno"));
  EXPECT_EQ(contenido_de(ruta("a.txt")), "uno\r\n");
  ASSERT_EQ(disco.abrir(propio("A.TXT"), modo::anadir, f), 0);
  fichero g(std::move(f));
  EXPECT_TRUE(g.linea("dos\n"));
  EXPECT_EQ(contenido_de(ruta("a.txt")), "uno\r\ndos\n\r\n");
  ASSERT_EQ(disco.abrir(propio("A.TXT"), modo::leer, f), 0);
  EXPECT_FALSE(f.linea("tres"));
  ASSERT_EQ(disco.abrir(propio("A.TXT"), modo::escribir, f), 0);
  EXPECT_EQ(contenido_de(ruta("a.txt")), "");
  EXPECT_EQ(carpeta.cuantos(), 1);
}

TEST_F(ArchivosPosix, AbrirNoEsperaANadie) {
  fs::create_directory(ruta("carpeta"));
  ASSERT_EQ(::mkfifo(ruta("tubo").c_str(), 0600), 0);
  fichero f;
  for (const modo como : {modo::leer, modo::escribir, modo::anadir}) {
    EXPECT_EQ(disco.abrir(propio("tubo"), como, f), ENODEV);
    EXPECT_EQ(disco.abrir(propio("carpeta"), como, f), EISDIR);
  }
  EXPECT_EQ(disco.abrir("/dev/null", modo::escribir, f), ENODEV);
}

/// Runs `que` in a process that can make no file longer than `limite` bytes. True if it gave True there.
bool con_disco_lleno(rlim_t limite, const std::function<bool()>& que) {
  const pid_t hijo = ::fork();
  if (hijo == 0) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit tope{limite, limite};
    ::_exit(::setrlimit(RLIMIT_FSIZE, &tope) == 0 && que() ? 0 : 1);
  }
  int estado = 1;
  return ::waitpid(hijo, &estado, 0) == hijo && WIFEXITED(estado) && WEXITSTATUS(estado) == 0;
}

TEST_F(ArchivosPosix, DiscoLlenoDejaElArchivoViejoEntero) {
  carpeta.escribir("SETTINGS.TXT", "viejo");
  for (const rlim_t limite : {rlim_t{0}, rlim_t{100}}) {
    EXPECT_TRUE(con_disco_lleno(
        limite, [&] { return disco.guardar(propio("SETTINGS.TXT"), std::string(limite + 1, 'n')) == EFBIG; }));
    EXPECT_EQ(contenido_de(ruta("SETTINGS.TXT")), "viejo");
    EXPECT_EQ(carpeta.cuantos(), 1);
  }
}

TEST_F(ArchivosPosix, LineaQueNoCabeEnteraEsUnError) {
  EXPECT_TRUE(con_disco_lleno(10, [&] {
    fichero f;
    return disco.abrir(propio("memoria.txt"), modo::escribir, f) == 0 && f.linea("123") && !f.linea("4567");
  }));
  EXPECT_EQ(contenido_de(ruta("memoria.txt")), "123\r\n4567\r");
}

}  // namespace
}  // namespace morvane
