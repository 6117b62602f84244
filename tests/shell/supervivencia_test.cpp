// Settings and history under a full disk, under a kill at any moment, and under two programs in one directory.

#include <sys/stat.h>

#include "apoyo/banco_principal.h"
#include "apoyo/hijos.h"
#include "platform/sin_privilegios.h"

using namespace apoyo;

namespace {

namespace fs = std::filesystem;
using rutas = std::vector<std::string>;

const std::string ajustes_nuevos = "\"115200\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n";

rutas numeradas(int desde, int hasta) {
  rutas lista;
  for (int i = desde; i <= hasta; ++i) lista.push_back("/f/" + std::to_string(i));
  return lista;
}

struct supervivencia : banco_principal {
  struct trabajo {
    int guardadas;
    std::function<void()> hacer;
  };
  /// Files and window as after a start with `cuantas` files in the list.
  void preparar(int cuantas) {
    std::string lista;
    for (const std::string& una : numeradas(1, cuantas)) lista += "\"" + una + "\"\r\n";
    dir.escribir("SETTINGS.TXT", ajustes_buenos);
    dir.escribir("MENU.TXT", lista);
    f.link.valores.ruta_aplicacion = ficheros.ruta_aplicacion();
    leer_ajustes(f.link);
    leer_historial(f);
    f.link.valores.velocidad = "115200";
    plat.cajas.clear();
  }
  /// Whatever has happened: each file is the old one or the new one, and the next program loses nothing of the list.
  void espera_viejo_o_nuevo(int cuantas) {
    const std::string ajustes = dir.leer("SETTINGS.TXT");
    EXPECT_TRUE(ajustes == ajustes_buenos || ajustes == ajustes_nuevos) << ajustes;
    const int desde = cuantas == 10 ? 2 : 1;
    const rutas lista = lista_guardada(), nuevas = numeradas(desde, cuantas + 1);
    EXPECT_TRUE(lista == nuevas || lista == numeradas(1, cuantas)) << testing::PrintToString(lista);
    if (cuantas > 8) return;
    rutas con_otra = lista;
    con_otra.emplace_back("/g");
    actualizar_historial(f, "/g");
    EXPECT_EQ(lista_guardada(), con_otra);
  }
  const trabajo trabajos[3]{{3, [this] { guardar_ajustes(f.link), actualizar_historial(f, "/f/4"); }},
                            {9, [this] { actualizar_historial(f, "/f/10"); }},
                            {10, [this] { actualizar_historial(f, "/f/11"); }}};
};

TEST_F(supervivencia, a_kill_at_any_system_call_leaves_each_file_old_or_new_also_on_a_full_disk) {
  for (const trabajo& t : trabajos) {
    for (const rlim_t cabe : {1'000'000, 34}) {
      fin_hijo fin = fin_hijo::muerto;
      int n = 0;
      for (; fin == fin_hijo::muerto; ++n) {
        SCOPED_TRACE(n);
        preparar(t.guardadas);
        fin = matar_en(n, [&] {
          const disco_lleno tope(cabe);
          t.hacer();
        });
        if (fin == fin_hijo::prohibido) GTEST_SKIP() << "no process may be traced here";
        espera_viejo_o_nuevo(t.guardadas);
      }
      EXPECT_GT(n, 10) << "the kills have missed the work";
    }
  }
  int restos = 0;
  for (const auto& uno : fs::directory_iterator(dir.ruta())) {
    if (uno.path().extension() != ".tmp") continue;
    ++restos;
    fs::last_write_time(uno, fs::file_time_type::clock::now() - 2h);
  }
  guardar_ajustes(f.link);
  for (const auto& uno : fs::directory_iterator(dir.ruta())) EXPECT_NE(uno.path().extension(), ".tmp");
  EXPECT_GT(restos, 0) << "what killed programs have left is cleared away by the next save";
}

TEST_F(supervivencia, on_a_full_disk_each_file_stays_as_it_was_and_the_user_is_told) {
  for (const trabajo& t : trabajos) {
    for (rlim_t bytes = 0; bytes <= 110; ++bytes) {
      SCOPED_TRACE(bytes);
      preparar(t.guardadas);
      {
        const disco_lleno tope(bytes);
        t.hacer();
      }
      const bool todo = lista_guardada().back() == "/f/" + std::to_string(t.guardadas + 1);
      const bool ajustes = t.guardadas != 3 || dir.leer("SETTINGS.TXT") == ajustes_nuevos;
      EXPECT_EQ(plat.cajas.size(), (todo ? 0U : 1U) + (ajustes ? 0U : 1U));
      EXPECT_EQ(f.historial.at(static_cast<std::size_t>(std::min(t.guardadas + 1, 10))),
                "/f/" + std::to_string(t.guardadas + 1))
          << "what could not be saved stays in the list";
      espera_viejo_o_nuevo(t.guardadas);
    }
  }
}

TEST_F(supervivencia, two_programs_in_one_directory_lose_nothing_of_each_other) {
  constexpr int cuantas = 20;
  preparar(0);
  std::vector<pid_t> hijos;
  for (const std::string quien : {"/a/", "/b/"}) {
    hijos.push_back(en_un_hijo([&] {
      for (int i = 1; i <= cuantas; ++i) {
        actualizar_historial(f, quien + std::to_string(i));
        guardar_ajustes(f.link);
      }
      ::_exit(plat.cajas.empty() ? 0 : 1);
    }));
  }
  for (const pid_t hijo : hijos) {
    int estado = 1;
    EXPECT_TRUE(::waitpid(hijo, &estado, 0) == hijo && estado == 0);
  }
  // Of each program the last ones are there, in their order.
  const rutas lista = lista_guardada();
  EXPECT_EQ(lista.size(), 10U);
  std::map<std::string, int> ultima{{"/a/", cuantas}, {"/b/", cuantas}};
  for (auto una = lista.rbegin(); una != lista.rend(); ++una) {
    EXPECT_EQ(una->substr(3), std::to_string(ultima[una->substr(0, 3)]--)) << testing::PrintToString(lista);
  }
  dir.escribir("MENU.TXT", "\"/g/3\"\r\n");
  actualizar_historial(f, "/g/3");
  EXPECT_TRUE(f.menu.men_dir[0].Visible && !f.menu.men_dir[1].Visible && f.historial[2].empty());
  EXPECT_EQ(dir.leer("MENU.TXT"), "\"/g/3\"\r\n") << "a path that is there changes nothing";
}

TEST_F(supervivencia, whatever_stands_in_the_place_of_a_file_the_program_starts_and_leaves_it_there) {
  const std::pair<const char*, std::function<void(const fs::path&)>> estorbos[] = {
      {"pipe", [](const fs::path& ruta) { ::mkfifo(ruta.c_str(), 0600); }},
      {"folder", [](const fs::path& ruta) { fs::create_directory(ruta); }},
      {"device", [](const fs::path& ruta) { fs::create_symlink("/dev/zero", ruta); }},
      {"circle", [](const fs::path& ruta) { fs::create_symlink(ruta, ruta); }},
      {"unreadable", [](const fs::path& ruta) { std::ofstream(ruta) << "x", fs::permissions(ruta, fs::perms(0222)); }},
      {"2 GiB",
       [](const fs::path& ruta) { std::ofstream(ruta) << "x", fs::resize_file(ruta, std::uintmax_t{2} << 30); }},
  };
  fs::permissions(dir.ruta(), fs::perms(0777));
  for (const char* nombre : {"SETTINGS.TXT", "MENU.TXT"}) {
    for (const auto& [que, poner] : estorbos) {
      SCOPED_TRACE(std::string(que) + " as " + nombre);
      preparar(10);
      const fs::path ruta = dir.ruta() / nombre;
      fs::remove(ruta);
      poner(ruta);
      std::error_code ninguno;
      const auto antes = std::pair(fs::symlink_status(ruta).type(), fs::file_size(ruta, ninguno));
      {
        const sin_privilegios guarda;
        f.link.valores = {};
        Form_Load(f);
        f.link.valores.velocidad = "115200";
        guardar_ajustes(f.link);
        actualizar_historial(f, "/f/11");
      }
      EXPECT_LE(plat.cajas.size(), 3U) << textos();
      EXPECT_TRUE(antes == std::pair(fs::symlink_status(ruta).type(), fs::file_size(ruta, ninguno)))
          << "what cannot be read is not written over";
      fs::remove_all(ruta);
    }
  }
}

}  // namespace
