#include <sys/stat.h>

#include <chrono>

#include "apoyo/carpeta.h"
#include "apoyo/hijos.h"
#include "apoyo/sin_privilegios.h"
#include "files/fichero_entero.h"
#include "files/lector_lineas.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using modo = archivos::modo;

class ArchivosPosix : public testing::Test {
 protected:
  std::string propio(const std::string& nombre) const { return disco.ruta_aplicacion() + nombre; }
  fs::path ruta(const std::string& nombre) const { return carpeta.ruta() / nombre; }

  apoyo::carpeta carpeta;
  archivos disco{carpeta.ruta()};
};

TEST_F(ArchivosPosix, UnNombreSeHallaSinMirarMayusculasYElExactoGana) {
  carpeta.escribir("unidades/c/datos/TORVAX/Memoria.txt", "");
  for (const char* nombre : {"unO.txt", "Uno.txt", "UNO.txt", "UnO.txt"}) carpeta.escribir(nombre, nombre);
  const std::pair<std::string, const char*> casos[] = {{propio("UNO.TXT"), "UNO.txt"},
                                                       {"C:\\Datos\\Torvax\\memoria.txt", "Memoria.txt"},
                                                       {propio("UNIDADES"), ""},
                                                       {propio(std::string("UNO.txt\0x", 9)), ""}};
  for (const auto& [nombre, hallado] : casos) EXPECT_EQ(disco.Dir(nombre), hallado) << nombre;
  EXPECT_EQ(disco.leer(propio("UnO.txt")), "UnO.txt") << "the exact name wins";
  EXPECT_EQ(disco.anfitrion("d:\\\\Datos\\m.txt"), ruta("unidades/d/Datos/m.txt"));
}

TEST_F(ArchivosPosix, GuardarConservaModoYEnlaceYUnDiarioNoLosSigue) {
  fs::permissions(carpeta.escribir("datos/real.txt", "viejo"), fs::perms(0666));
  fs::create_symlink("datos/real.txt", ruta("menu.txt"));
  ASSERT_EQ(disco.guardar(propio("MENU.TXT"), "nuevo"), 0);
  EXPECT_TRUE(fs::is_symlink(ruta("menu.txt")));
  ASSERT_EQ(disco.anadir_linea(propio("menu.txt"), "dos\r\n"), 0);
  fs::create_hard_link(ruta("datos/real.txt"), ruta("otro.txt"));
  fs::create_symlink("datos/nuevo.txt", ruta("roto.txt"));
  fichero f;
  for (const modo m : {modo::escribir, modo::anadir}) {
    EXPECT_EQ(disco.abrir(propio("menu.txt"), m, f), ELOOP);
    EXPECT_EQ(disco.abrir(propio("otro.txt"), m, f), EMLINK);
  }
  EXPECT_EQ(disco.abrir(propio("roto.txt"), modo::escribir, f), ELOOP);
  EXPECT_FALSE(fs::exists(ruta("datos/nuevo.txt")));
  EXPECT_EQ(carpeta.leer("datos/real.txt"), "nuevo\r\ndos\r\n");
  EXPECT_EQ(fs::status(ruta("datos/real.txt")).permissions(), fs::perms(0666));
}

TEST_F(ArchivosPosix, DondeNoSePuedeSeDiceElErrorYNadaCambia) {
  fs::permissions(carpeta.escribir("carpeta/menu.txt", "viejo"), fs::perms(0444));
  fs::permissions(carpeta.escribir("secreto", "x"), fs::perms(0));
  ASSERT_EQ(::mkfifo(ruta("tubo").c_str(), 0600), 0);
  fs::create_symlink("circulo", ruta("circulo"));
  fs::resize_file(carpeta.escribir("enorme", ""), (128 << 20) + 1);
  using clase = causa_archivo::clase;
  const std::tuple<std::string, error_archivo, error_archivo, causa_archivo> casos[] = {
      {"carpeta", EISDIR, EISDIR, {clase::no_es_normal}},
      {"tubo", ENODEV, ENODEV, {clase::no_es_normal}},
      {"circulo", ELOOP, ELOOP, {clase::enlaces_en_circulo}},
      {"no\\hay", ENOENT, ENOENT, {clase::no_existe}},
      {std::string(256, 'n'), ENAMETOOLONG, ENAMETOOLONG, {clase::nombre_largo}},
      {"falta", 0, ENOENT, {clase::no_existe}},
      {"enorme", 0, 0, {clase::demasiado_grande, 0, 128 << 20}},
  };
  fichero f;
  lector_lineas lector;
  for (const auto& [nombre, al_guardar, al_abrir, causa] : casos) {
    SCOPED_TRACE(nombre);
    EXPECT_EQ(disco.leer(propio(nombre)), std::nullopt);
    EXPECT_FALSE(lector.abrir(ruta(nombre), lector_lineas::finales::cr));
    EXPECT_TRUE(lector.causa() == causa) << static_cast<int>(lector.causa().cual);
    const auto entero = leer_entero(ruta(nombre), 128 << 20);
    EXPECT_TRUE(std::holds_alternative<causa_archivo>(entero) && std::get<causa_archivo>(entero) == causa);
    EXPECT_EQ(disco.abrir(propio(nombre), modo::anadir, f), al_abrir);
    EXPECT_EQ(disco.guardar(propio(nombre), "x"), al_guardar);
    EXPECT_EQ(disco.abrir(propio(nombre), modo::escribir, f), al_guardar);
  }
  for (const char* paso : {"", "carpeta"}) fs::permissions(ruta(paso), fs::perms(0777));
  const sin_privilegios guarda;
  EXPECT_EQ(disco.guardar(propio("carpeta\\menu.txt"), "nuevo"), EACCES) << "what is read-only stays so";
  EXPECT_FALSE(lector.abrir(ruta("secreto"), lector_lineas::finales::cr));
  EXPECT_EQ(lector.causa().cual, clase::sin_permiso);
}

TEST_F(ArchivosPosix, UnDiscoLlenoNoDejaMediaLineaNiRestos) {
  for (rlim_t bytes = 0; bytes <= 25; ++bytes) {
    SCOPED_TRACE(bytes);
    fichero f;
    ASSERT_EQ(disco.abrir(propio("memoria.txt"), modo::escribir, f), 0);
    const apoyo::disco_lleno tope(bytes);
    EXPECT_EQ(disco.guardar(propio("SETTINGS.TXT"), std::string(26, 'n')), EFBIG);
    for (rlim_t fin = 6; fin <= 24; fin += 6) EXPECT_EQ(f.linea("1234"), fin <= bytes);
    EXPECT_EQ(carpeta.leer("memoria.txt").size(), bytes / 6 * 6);
    EXPECT_EQ(std::distance(fs::directory_iterator(carpeta.ruta()), fs::directory_iterator()), 1);
  }
}

TEST_F(ArchivosPosix, UnSegundoProgramaNoVaciaElDiarioDelPrimeroNiLoDetiene) {
  fichero primero, segundo;
  ASSERT_EQ(disco.abrir(propio("memoria.txt"), modo::escribir, primero), 0);
  EXPECT_TRUE(primero.linea("1"));
  for (const modo m : {modo::escribir, modo::anadir}) EXPECT_EQ(disco.abrir(propio("memoria.txt"), m, segundo), EBUSY);
  EXPECT_EQ(carpeta.leer("memoria.txt"), "1\r\n");
  fs::resize_file(ruta("memoria.txt"), 0);
  EXPECT_TRUE(primero.linea("3"));
  EXPECT_EQ(carpeta.leer("memoria.txt"), "3\r\n") << "whatever else may empty it, what follows is text";
  int turnos = 0;
  const auto contar = [&] { ++turnos; };
  disco.por_turno(propio("M"), [&] { disco.por_turno(propio("M"), contar, std::chrono::milliseconds(20)); });
  EXPECT_EQ(turnos, 1) << "a turn that does not end holds nobody up";
}

TEST_F(ArchivosPosix, SoloSeBarreLoQueProcesosMuertosDejaronHaceTiempo) {
  const pid_t hijo = apoyo::en_un_hijo([] {});
  ASSERT_EQ(::waitpid(hijo, nullptr, 0), hijo);
  const std::string muerto = ".morvane-" + std::to_string(hijo), vivo = ".morvane-" + std::to_string(::getppid());
  const std::string viejos[] = {muerto + "-17.tmp", vivo + "-0.tmp",    ".morvane-0-0.tmp",
                                muerto + "0.tmp",   muerto + "-0.tmpx", "x" + muerto + "-0.tmp"};
  const fs::path reciente = carpeta.escribir(muerto + "-1.tmp", "x");
  for (const std::string& uno : viejos) {
    fs::last_write_time(carpeta.escribir(uno, "x"), fs::last_write_time(reciente) - std::chrono::hours(2));
  }
  ASSERT_EQ(disco.guardar(propio("MENU.TXT"), "x"), 0);
  for (const std::string& uno : viejos) EXPECT_EQ(fs::exists(ruta(uno)), uno != viejos[0]) << uno;
  EXPECT_TRUE(fs::exists(reciente));
}

}  // namespace
}  // namespace morvane
