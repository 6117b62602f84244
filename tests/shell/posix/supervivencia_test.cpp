// Settings and history under a kill at any moment, a full disk, and another program in the same directory.

#include "apoyo/banco_principal.h"
#include "apoyo/hijos.h"

using namespace apoyo;

namespace {

namespace fs = std::filesystem;
using rutas = std::vector<std::string>;
using supervivencia = banco_principal;

rutas numeradas(int desde, int hasta) {
  rutas lista;
  for (int i = desde; i <= hasta; ++i) lista.push_back("/f/" + std::to_string(i));
  return lista;
}

TEST_F(supervivencia, killed_anywhere_each_file_is_the_old_one_or_the_new_one_and_a_full_disk_is_told) {
  for (const int cuantas : {3, 10}) {
    const rutas antes = numeradas(1, cuantas), despues = numeradas(cuantas == 10 ? 2 : 1, cuantas + 1);
    const auto preparar = [&] {
      // What killed programs leave makes work for the next ones.
      fs::remove_all(dir.ruta());
      std::string lista;
      for (const std::string& ruta : antes) lista += "\"" + ruta + "\"\r\n";
      dir.escribir("SETTINGS.TXT", ajustes_buenos);
      dir.escribir("MENU.TXT", lista);
      empezar();
      f.link.valores.velocidad = "115200";
    };
    const auto guardar = [&] { guardar_ajustes(f.link), actualizar_historial(f, despues.back()); };
    const auto viejos = [&] {
      const std::string ajustes = dir.leer("SETTINGS.TXT");
      const rutas lista = lista_guardada();
      EXPECT_TRUE(ajustes == ajustes_buenos || ajustes == "\"115200\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n") << ajustes;
      EXPECT_TRUE(lista == antes || lista == despues) << testing::PrintToString(lista);
      return (ajustes == ajustes_buenos ? 1 : 0) + (lista == antes ? 1 : 0);
    };
    int fallidas = 0;
    fin_hijo fin = fin_hijo::muerto;
    for (int n = 0; fin == fin_hijo::muerto; ++n) {
      SCOPED_TRACE(n);
      preparar();
      fin = matar_en(n, guardar);
      if (fin == fin_hijo::prohibido) GTEST_SKIP() << "no process may be traced here";
      fallidas += viejos();
    }
    EXPECT_EQ(viejos(), 0) << fallidas;
    EXPECT_TRUE(fallidas > 1) << fallidas;
    preparar();
    {
      const disco_lleno tope(20);
      guardar();
    }
    EXPECT_EQ(viejos(), 2) << textos();
    EXPECT_EQ(plat.cajas.size(), 2U) << textos();
  }
}

TEST_F(supervivencia, a_journal_that_could_not_be_written_is_told_and_the_run_goes_on) {
  empezar();
  abrir_archivo("ocho.s19", ocho_bytes);
  plat.cajas.clear();
  const disco_lleno tope(20);
  f.menu.men_prog_t.Click();
  EXPECT_EQ(plat.cajas, (std::vector<caja>{critica("Atención",
                                                   "No se ha podido escribir completo el fichero: "
                                                   "C:\\Datos\\TORVAX-m68k\\memoria.txt"),
                                           {"", texto_grabado}}));
}

TEST_F(supervivencia, the_list_of_another_program_is_read_again_and_its_turn_respected) {
  empezar();
  for (const std::string ruta : {"/f/1", "/f/2"}) {
    dir.escribir("MENU.TXT", "\"" + ruta + "\"\r\n");
    actualizar_historial(f, ruta);
    EXPECT_EQ(f.historial[1], ruta) << ruta;
    EXPECT_TRUE(f.historial[2].empty()) << ruta;
    EXPECT_EQ(lista_guardada(), rutas{ruta}) << ruta;
  }
  const auto inicio = std::chrono::steady_clock::now();
  ficheros.por_turno(ficheros.ruta_aplicacion() + "MENU.TXT", [&] { actualizar_historial(f, "/f/3"); });
  EXPECT_TRUE(std::chrono::steady_clock::now() - inicio > 500ms);
  EXPECT_EQ(lista_guardada().size(), 2U);
}

}  // namespace
