#include "platform/lector_lineas.h"

#include <sys/stat.h>

#include <filesystem>
#include <vector>

#include "platform/carpeta_temporal.h"

namespace morvane {
namespace {

using finales = lector_lineas::finales;
using lineas = std::vector<std::string>;

lineas todas(const std::string& ruta, finales como) {
  lector_lineas lector;
  EXPECT_TRUE(lector.abrir(ruta, como)) << lector.motivo();
  EXPECT_EQ(lector.tamano(), std::filesystem::file_size(ruta));
  lineas leidas;
  lector_lineas::linea linea;
  while (lector.siguiente(linea)) {
    EXPECT_EQ(linea.texto.size(), std::min<std::uint64_t>(linea.largo, lector_lineas::maximo));
    leidas.emplace_back(linea.texto);
  }
  EXPECT_FALSE(lector.siguiente(linea));
  EXPECT_FALSE(lector.fallo());
  return leidas;
}

TEST(LectorLineas, Finales) {
  using namespace std::string_literals;
  struct caso {
    std::string contenido;
    lineas con_cr, con_unix;
  };
  prueba::carpeta_temporal carpeta;
  const std::vector<caso> casos = {
      {"", {}, {}},
      {"\r", {""}, {""}},
      {"\r\n", {""}, {""}},
      {"\n", {"\n"}, {""}},
      {"a\r\nb\rc", {"a", "b", "c"}, {"a", "b", "c"}},
      {"a\n\nb\n", {"a\n\nb\n"}, {"a", "", "b"}},
      {"a\nb\rc\n", {"a\nb", "c\n"}, {"a\nb", "c\n"}},
      {"a\r\r\n\n\rb", {"a", "", "\n", "b"}, {"a", "", "\n", "b"}},
      {"\x1A\0\xFF"s + "\r\0"s, {"\x1A\0\xFF"s, "\0"s}, {"\x1A\0\xFF"s, "\0"s}},
  };
  for (const caso& c : casos) {
    const std::string ruta = carpeta.escribir("l\xFF.s19", c.contenido);
    EXPECT_EQ(todas(ruta, finales::cr), c.con_cr) << testing::PrintToString(c.contenido);
    EXPECT_EQ(todas(ruta, finales::cr_o_unix), c.con_unix) << testing::PrintToString(c.contenido);
  }
}

TEST(LectorLineas, FinalesAlrededorDelBordeDeUnBloque) {
  prueba::carpeta_temporal carpeta;
  for (const std::string final : {"\r", "\r\n", "\n"}) {
    for (std::size_t hasta = 64 * 1024 - 3; hasta <= 64 * 1024 + 1; ++hasta) {
      std::string contenido;
      lineas esperadas(hasta / 1000, std::string(1000 - final.size(), 'x'));
      for (const std::string& linea : esperadas) contenido += linea + final;
      esperadas.emplace_back(hasta - contenido.size(), 'y');
      contenido += esperadas.back() + final;
      const std::string ruta = carpeta.escribir("borde", contenido);
      EXPECT_EQ(todas(ruta, finales::cr_o_unix), esperadas);
      esperadas.emplace_back("z");
      carpeta.escribir("borde", contenido + "z");
      EXPECT_EQ(todas(ruta, finales::cr_o_unix), esperadas) << hasta;
    }
  }
}

TEST(LectorLineas, UnCrLejanoDecideSobreTodoElArchivo) {
  prueba::carpeta_temporal carpeta;
  const std::string largo(200'000, '\n');
  const std::string ruta = carpeta.escribir("x", largo + "\rfin");
  EXPECT_EQ(todas(ruta, finales::cr_o_unix), (lineas{largo.substr(0, lector_lineas::maximo), "fin"}));
}

TEST(LectorLineas, LineaMuyLargaDiceSuLargoVerdadero) {
  prueba::carpeta_temporal carpeta;
  lector_lineas lector;
  lector_lineas::linea linea;
  for (const std::size_t largo : {std::size_t{1023}, std::size_t{1024}, std::size_t{1025}, std::size_t{300'000}}) {
    std::string contenido(largo, 'a');
    contenido.front() = 'i';
    ASSERT_TRUE(lector.abrir(carpeta.escribir("x", contenido + "\r\nb"), finales::cr));
    ASSERT_TRUE(lector.siguiente(linea));
    EXPECT_EQ(linea.largo, largo);
    EXPECT_EQ(linea.texto, contenido.substr(0, 1024));
    ASSERT_TRUE(lector.siguiente(linea));
    EXPECT_EQ(linea.texto, "b");
  }
}

TEST(LectorLineas, LoQueNoSePuedeLeerDiceElMotivo) {
  prueba::carpeta_temporal carpeta;
  const std::string base = carpeta.ruta().native();
  ASSERT_EQ(::mkfifo((base + "/tubo").c_str(), 0600), 0);
  std::filesystem::create_symlink("circulo", base + "/circulo");
  carpeta.escribir("a", "x");
  lector_lineas lector;
  lector_lineas::linea linea;
  for (const auto& [ruta, motivo] : std::vector<std::pair<std::string, std::string>>{
           {base + "/falta", "el archivo no existe"},
           {base + "/a/b", "el archivo no existe"},
           {base + std::string("/a\0b", 4), "el archivo no existe"},
           {"", "el archivo no existe"},
           {base, "no es un archivo normal"},
           {base + "/tubo", "no es un archivo normal"},
           {"/dev/zero", "no es un archivo normal"},
           {base + "/circulo", "sus enlaces se muerden la cola"},
           {base + "/" + std::string(300, 'n'), "el nombre es demasiado largo"}}) {
    EXPECT_FALSE(lector.abrir(ruta, finales::cr_o_unix)) << ruta;
    EXPECT_EQ(lector.motivo(), motivo) << ruta;
    EXPECT_TRUE(lector.fallo());
    EXPECT_FALSE(lector.siguiente(linea));
  }
  EXPECT_TRUE(lector.abrir(base + "/a", finales::cr));
  EXPECT_EQ(lector.motivo(), "");
  EXPECT_FALSE(lector.fallo());
}

TEST(LectorLineas, SinPermisoLoDice) {
  prueba::carpeta_temporal carpeta;
  const auto ruta = carpeta.escribir("a", "x");
  std::filesystem::permissions(ruta, std::filesystem::perms::none);
  lector_lineas lector;
  prueba::sin_privilegios guarda;
  EXPECT_FALSE(lector.abrir(ruta, finales::cr));
  EXPECT_EQ(lector.motivo(), "no hay permiso para leerlo");
}

TEST(LectorLineas, ArchivoQueEncogeMientrasSeLeeAcabaSinMas) {
  prueba::carpeta_temporal carpeta;
  std::string contenido;
  for (int i = 0; i < 50'000; ++i) contenido += "S1\r\n";
  const auto ruta = carpeta.escribir("x", contenido);
  lector_lineas lector;
  lector_lineas::linea linea;
  ASSERT_TRUE(lector.abrir(ruta, finales::cr));
  ASSERT_TRUE(lector.siguiente(linea));
  std::filesystem::resize_file(ruta, 10);
  int mas = 0;
  while (lector.siguiente(linea)) ++mas;
  EXPECT_LT(mas, 20'000);
  EXPECT_FALSE(lector.fallo());
}

}  // namespace
}  // namespace morvane
