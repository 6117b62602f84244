#include "platform/lector_lineas.h"

#include <sys/stat.h>

#include <chrono>
#include <functional>
#include <vector>

#include "apoyo/carpeta.h"
#include "platform/sin_privilegios.h"

namespace morvane {
namespace {

using namespace std::string_literals;
using finales = lector_lineas::finales;
using lineas = std::vector<std::string>;

class LectorLineas : public testing::Test {
 protected:
  lineas todas(const std::string& contenido, finales como) {
    EXPECT_TRUE(lector.abrir(carpeta.escribir("l\xFF.s19", contenido), como)) << lector.motivo();
    EXPECT_EQ(lector.tamano(), contenido.size());
    lineas leidas;
    while (lector.siguiente(linea)) {
      EXPECT_EQ(linea.texto.size(), std::min<std::uint64_t>(linea.largo, lector_lineas::maximo));
      leidas.emplace_back(linea.texto);
      largo_ultima = linea.largo;
    }
    EXPECT_FALSE(lector.fallo());
    return leidas;
  }

  apoyo::carpeta carpeta;
  lector_lineas lector;
  lector_lineas::linea linea;
  std::uint64_t largo_ultima = 0;
};

TEST_F(LectorLineas, Finales) {
  const std::string saltos(200'000, '\n');
  const std::tuple<std::string, lineas, lineas> casos[] = {
      {"", {}, {}},
      {"\r", {""}, {""}},
      {"\r\n", {""}, {""}},
      {"a\r\nb\rc", {"a", "b", "c"}, {"a", "b", "c"}},
      {"a\n\nb\n", {"a\n\nb\n"}, {"a", "", "b"}},
      {"a\nb\rc\n", {"a\nb", "c\n"}, {"a\nb", "c\n"}},
      {"a\r\r\n\n\rb", {"a", "", "\n", "b"}, {"a", "", "\n", "b"}},
      {"\x1A\0\xFF\r\0"s, {"\x1A\0\xFF"s, "\0"s}, {"\x1A\0\xFF"s, "\0"s}},
      // a CR far away decides for the whole file
      {saltos + "\rfin",
       {saltos.substr(0, lector_lineas::maximo), "fin"},
       {saltos.substr(0, lector_lineas::maximo), "fin"}},
  };
  for (const auto& [contenido, con_cr, con_unix] : casos) {
    EXPECT_EQ(todas(contenido, finales::cr), con_cr);
    EXPECT_EQ(todas(contenido, finales::cr_o_unix), con_unix);
  }
}

TEST_F(LectorLineas, FinalesAlrededorDelBordeDeUnBloque) {
  for (const std::string final : {"\r", "\r\n", "\n"}) {
    for (std::size_t hasta = 64 * 1024 - 3; hasta <= 64 * 1024 + 1; ++hasta) {
      lineas esperadas{std::string(1000, 'x'), std::string(hasta - 1000 - final.size(), 'y')};
      std::string contenido;
      for (const std::string& una : esperadas) contenido.append(una) += final;
      esperadas[1].resize(lector_lineas::maximo);
      EXPECT_EQ(todas(contenido, finales::cr_o_unix), esperadas) << hasta;
      esperadas.emplace_back("z");
      EXPECT_EQ(todas(contenido + "z", finales::cr_o_unix), esperadas) << hasta;
    }
  }
}

TEST_F(LectorLineas, LineaMuyLargaDiceSuLargoVerdadero) {
  for (const std::size_t largo : {1024, 1025, 300'000}) {
    EXPECT_EQ(todas("b\n" + std::string(largo, 'a'), finales::cr_o_unix), (lineas{"b", std::string(1024, 'a')}));
    EXPECT_EQ(largo_ultima, largo);
  }
}

TEST_F(LectorLineas, LoQueNoSePuedeLeerDiceElMotivo) {
  const std::string base = carpeta.ruta().string();
  const std::string a = carpeta.escribir("a", "x");
  ASSERT_EQ(::mkfifo((base + "/tubo").c_str(), 0600), 0);
  std::filesystem::create_symlink("circulo", base + "/circulo");
  const auto espera = [&](const std::string& ruta, const std::string& motivo) {
    EXPECT_FALSE(lector.abrir(ruta, finales::cr_o_unix)) << ruta;
    EXPECT_EQ(lector.motivo(), motivo) << ruta;
    EXPECT_TRUE(lector.fallo());
    EXPECT_FALSE(lector.siguiente(linea));
  };
  for (const std::string& falta : {base + "/falta", a + "/b", a + "\0b"s, ""s}) espera(falta, "el archivo no existe");
  for (const std::string& otro : {base, base + "/tubo", "/dev/zero"s}) espera(otro, "no es un archivo normal");
  espera(base + "/circulo", "sus enlaces se muerden la cola");
  espera(base + "/" + std::string(300, 'n'), "el nombre es demasiado largo");
  EXPECT_EQ(todas("x", finales::cr), lineas{"x"});
  EXPECT_EQ(lector.motivo(), "");
  sin_privilegios guarda;
  espera(a, "no hay permiso para leerlo");
}

TEST_F(LectorLineas, LoQueCambiaMientrasSeLeeNoCuentaComoLeido) {
  const std::string entero(200'000, '\r');
  const std::pair<const char*, std::function<void(const std::string&)>> cambios[] = {
      {"shrinks", [](const std::string& ruta) { std::filesystem::resize_file(ruta, 10); }},
      {"grows", [](const std::string& ruta) { std::ofstream(ruta, std::ios::app) << 'x'; }},
      {"grows without end",
       [](const std::string& ruta) { std::filesystem::resize_file(ruta, std::uintmax_t{1} << 40); }},
      {"is written anew",
       [&](const std::string& ruta) {
         carpeta.escribir("x", entero);
         std::filesystem::last_write_time(ruta, std::filesystem::file_time_type::clock::now() + std::chrono::hours(1));
       }},
  };
  for (const auto& [cual, cambiar] : cambios) {
    SCOPED_TRACE(cual);
    const std::string ruta = carpeta.escribir("x", entero);
    ASSERT_TRUE(lector.abrir(ruta, finales::cr));
    ASSERT_TRUE(lector.siguiente(linea));
    cambiar(ruta);
    int mas = 0;
    while (lector.siguiente(linea)) ++mas;
    EXPECT_LT(mas, 200'001);
    EXPECT_TRUE(lector.fallo());
    EXPECT_EQ(lector.motivo(), "ha cambiado mientras se leía");
  }
}

TEST_F(LectorLineas, LoDemasiadoGrandeNiSeEmpieza) {
  const std::string ruta = carpeta.escribir("x", "");
  std::filesystem::resize_file(ruta, lector_lineas::tamano_maximo + 1);
  EXPECT_FALSE(lector.abrir(ruta, finales::cr));
  EXPECT_EQ(lector.motivo(), "es demasiado grande: el máximo son 128 MiB");
  std::filesystem::resize_file(ruta, lector_lineas::tamano_maximo);
  ASSERT_TRUE(lector.abrir(ruta, finales::cr));
  EXPECT_TRUE(lector.siguiente(linea));
  EXPECT_EQ(linea.largo, lector_lineas::tamano_maximo);
}

}  // namespace
}  // namespace morvane
