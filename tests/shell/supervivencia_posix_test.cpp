// Settings and history under a full disk, under a kill at any moment, and under two programs in one directory.

#include "apoyo/banco_principal.h"
#include "apoyo/hijos.h"

using namespace apoyo;

namespace {

namespace fs = std::filesystem;
using rutas = std::vector<std::string>;

const std::string ajustes_nuevos = "\"115200\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n";

std::string una(int numero) {
  return "/f/" + std::to_string(numero);
}
rutas numeradas(int desde, int hasta) {
  rutas lista;
  for (int i = desde; i <= hasta; ++i) lista.push_back(una(i));
  return lista;
}

struct supervivencia : banco_principal {
  /// Files and window as after a start with `cuantas` files in the list.
  void preparar(int cuantas) {
    // What killed programs leave makes work for the next ones.
    fs::remove_all(dir.ruta());
    std::string lista;
    for (const std::string& ruta : numeradas(1, cuantas)) lista += "\"" + ruta + "\"\r\n";
    dir.escribir("SETTINGS.TXT", ajustes_buenos);
    dir.escribir("MENU.TXT", lista);
    f.link.valores.ruta_aplicacion = ficheros.ruta_aplicacion();
    leer_ajustes(f.link);
    leer_historial(f);
    f.link.valores.velocidad = "115200";
  }
  /// Each file is the old one or the new one, and the next program loses nothing of the list. Gives how many are old.
  std::size_t viejos(int cuantas) {
    const std::string ajustes = dir.leer("SETTINGS.TXT");
    EXPECT_TRUE(ajustes == ajustes_buenos || ajustes == ajustes_nuevos) << ajustes;
    const rutas lista = lista_guardada(), antes = numeradas(1, cuantas);
    EXPECT_TRUE(lista == antes || lista == numeradas(cuantas == 10 ? 2 : 1, cuantas + 1))
        << testing::PrintToString(lista);
    return (ajustes == ajustes_buenos ? 1U : 0U) + (lista == antes ? 1U : 0U);
  }
};

TEST_F(supervivencia, killed_anywhere_each_file_is_the_old_one_or_the_new_one_and_a_full_disk_is_told) {
  for (const int guardadas : {3, 10}) {
    const auto hacer = [&] { guardar_ajustes(f.link), actualizar_historial(f, una(guardadas + 1)); };
    std::size_t fallidas = 0;
    fin_hijo fin = fin_hijo::muerto;
    for (int n = 0; fin == fin_hijo::muerto; ++n) {
      SCOPED_TRACE(n);
      preparar(guardadas);
      fin = matar_en(n, hacer);
      if (fin == fin_hijo::prohibido) GTEST_SKIP() << "no process may be traced here";
      const std::size_t sin_guardar = viejos(guardadas);
      EXPECT_TRUE(fin == fin_hijo::muerto || sin_guardar == 0);
      fallidas += sin_guardar;
    }
    EXPECT_GT(fallidas, 1U) << "the kills have missed the work";
    preparar(guardadas);
    plat.cajas.clear();
    {
      const disco_lleno tope(20);
      hacer();
    }
    EXPECT_TRUE(viejos(guardadas) == 2 && plat.cajas.size() == 2) << textos();
  }
}

TEST_F(supervivencia, two_programs_in_one_directory_lose_nothing_of_each_other) {
  std::map<std::string, int> ultima{{"/a/", 20}, {"/b/", 20}};
  preparar(0);
  for (const auto& [quien, cuantas] : ultima) {
    en_un_hijo([&] {
      for (int i = 1; i <= cuantas; ++i) actualizar_historial(f, quien + std::to_string(i)), guardar_ajustes(f.link);
      ::_exit(plat.cajas.empty() ? 0 : 1);
    });
  }
  for (int estado = 1; ::wait(&estado) > 0;) EXPECT_EQ(estado, 0);
  // Of each program the last ones are there, in their order.
  const rutas lista = lista_guardada();
  EXPECT_EQ(lista.size(), 10U);
  for (auto ruta = lista.rbegin(); ruta != lista.rend(); ++ruta) {
    EXPECT_EQ(ruta->substr(3), std::to_string(ultima[ruta->substr(0, 3)]--)) << testing::PrintToString(lista);
  }
  for (const std::string& ruta : {una(1), una(2)}) {
    const std::string ajena = "\"" + ruta + "\"\r\n";
    dir.escribir("MENU.TXT", ajena);
    actualizar_historial(f, ruta);
    EXPECT_TRUE(f.historial[1] == ruta && f.historial[2].empty() && dir.leer("MENU.TXT") == ajena) << ruta;
  }
}

}  // namespace
