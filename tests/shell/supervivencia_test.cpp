// Settings and history under a full disk, under a kill at any moment, and under two programs in one directory.

#include <sys/stat.h>

#include <chrono>

#include "apoyo/banco_principal.h"
#include "apoyo/hijos.h"
#include "platform/sin_privilegios.h"
#include "shell/historial.h"

using namespace apoyo;

namespace {

namespace fs = std::filesystem;
using rutas = std::vector<std::string>;

const std::string ajustes_nuevos = "\"115200\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n";

struct supervivencia : banco_principal {
  struct trabajo {
    int guardadas;
    std::function<void()> hacer;
  };

  static rutas numeradas(int desde, int hasta) {
    rutas lista;
    for (int i = desde; i <= hasta; ++i) lista.push_back("/f/" + std::to_string(i));
    return lista;
  }
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
  }
  std::vector<fs::path> provisionales() const {
    std::vector<fs::path> lista;
    for (const auto& uno : fs::directory_iterator(dir.ruta())) {
      if (uno.path().extension() == ".tmp") lista.push_back(uno.path());
    }
    return lista;
  }
  /// Whatever has happened: each file is the old one or the new one, for a program that starts now.
  void espera_viejo_o_nuevo(int cuantas, bool todo_nuevo) {
    const std::string ajustes = dir.leer("SETTINGS.TXT");
    EXPECT_TRUE(ajustes == ajustes_buenos || ajustes == ajustes_nuevos) << ajustes;
    const rutas lista = lista_guardada(), viejas = numeradas(1, cuantas),
                nuevas = numeradas(cuantas == 10 ? 2 : 1, cuantas + 1);
    EXPECT_TRUE(lista == nuevas || (lista == viejas && !todo_nuevo)) << testing::PrintToString(lista);
  }

  const trabajo guardar{9, [this] { guardar_ajustes(f.link); }};
  const trabajo anadir{9, [this] { actualizar_historial(f, "/f/10"); }};
  const trabajo desplazar{10, [this] { actualizar_historial(f, "/f/11"); }};
};

TEST_F(supervivencia, a_kill_at_any_system_call_leaves_each_file_old_or_new) {
  for (const trabajo& t : {guardar, anadir, desplazar}) {
    fin_hijo fin = fin_hijo::muerto;
    int n = 0;
    for (; fin == fin_hijo::muerto; ++n) {
      SCOPED_TRACE(n);
      preparar(t.guardadas);
      fin = matar_en(n, t.hacer);
      if (fin == fin_hijo::prohibido) GTEST_SKIP() << "no process may be traced here";
      espera_viejo_o_nuevo(t.guardadas, false);
    }
    EXPECT_GT(n, 20) << "the kills have missed the work";
  }
  const auto restos = provisionales();
  EXPECT_FALSE(restos.empty());
  for (const auto& uno : restos) fs::last_write_time(uno, fs::file_time_type::clock::now() - 2h);
  guardar.hacer();
  EXPECT_TRUE(provisionales().empty()) << "what killed programs have left is cleared away by the next save";
}

TEST_F(supervivencia, on_a_full_disk_each_file_stays_as_it_was_and_the_user_is_told) {
  for (const trabajo& t : {guardar, anadir, desplazar}) {
    preparar(t.guardadas);
    const std::size_t mayor = std::max(ajustes_nuevos.size(), dir.leer("MENU.TXT").size() + 20);
    for (rlim_t bytes = 0; bytes <= mayor; ++bytes) {
      preparar(t.guardadas);
      plat.cajas.clear();
      {
        const disco_lleno tope(bytes);
        t.hacer();
      }
      SCOPED_TRACE(bytes);
      ASSERT_LE(plat.cajas.size(), 1U);
      EXPECT_EQ(dir.leer("SETTINGS.TXT") == ajustes_nuevos || lista_guardada() != numeradas(1, t.guardadas),
                plat.cajas.empty());
      espera_viejo_o_nuevo(t.guardadas, bytes == mayor && t.guardadas == 10);
    }
  }
}

TEST_F(supervivencia, an_entry_that_could_not_be_saved_stays_in_the_list) {
  preparar(3);
  actualizar_historial(f, "/f/4");
  {
    const disco_lleno tope(0);
    actualizar_historial(f, "/f/5");
  }
  for (const char* otra : {"/f/6", "/f/7"}) actualizar_historial(f, otra);
  EXPECT_EQ(rutas(f.historial.begin() + 1, f.historial.begin() + 8), numeradas(1, 7));
}

TEST_F(supervivencia, a_line_torn_by_full_disk_and_kill_together_loses_no_other) {
  preparar(3);
  const rlim_t antes = dir.leer("MENU.TXT").size();
  int rotas = 0;
  for (rlim_t bytes = antes + 1; bytes < antes + 8; ++bytes) {
    fin_hijo fin = fin_hijo::muerto;
    for (int n = 0; fin == fin_hijo::muerto; ++n) {
      preparar(3);
      fin = matar_en(n, [&] {
        const disco_lleno tope(bytes);
        actualizar_historial(f, "/f/4");
      });
      if (fin == fin_hijo::prohibido) GTEST_SKIP() << "no process may be traced here";
      espera_viejo_o_nuevo(3, false);
      const auto tras_el_golpe = dir.leer("MENU.TXT").size();
      rotas += tras_el_golpe > antes && tras_el_golpe < antes + 8;
      actualizar_historial(f, "/f/5");
      const rutas lista = lista_guardada();
      EXPECT_TRUE(lista == (rutas{"/f/1", "/f/2", "/f/3", "/f/5"}) ||
                  lista == (rutas{"/f/1", "/f/2", "/f/3", "/f/4", "/f/5"}))
          << testing::PrintToString(lista);
    }
  }
  EXPECT_GT(rotas, 5);
}

TEST_F(supervivencia, two_programs_in_one_directory_lose_nothing_of_each_other) {
  for (const int cuantas : {5, 9, 40}) {
    preparar(0);
    f.historial.fill("");
    std::vector<pid_t> hijos;
    for (const std::string quien : {"/a/", "/b/"}) {
      hijos.push_back(en_un_hijo([&] {
        for (int i = 1; i <= cuantas; ++i) {
          actualizar_historial(f, quien + std::to_string(i));
          f.link.valores.velocidad = quien == "/a/" ? "115200" : "57600";
          guardar_ajustes(f.link);
        }
        ::_exit(plat.cajas.empty() ? 0 : 1);
      }));
    }
    // Meanwhile a third one starts over and over.
    for (int i = 0; i < cuantas; ++i) {
      const std::string ajustes = dir.leer("SETTINGS.TXT");
      EXPECT_TRUE(ajustes == ajustes_buenos || ajustes == ajustes_nuevos) << ajustes;
      EXPECT_LE(lista_guardada().size(), 10U);
    }
    for (const pid_t hijo : hijos) {
      int estado = 0;
      EXPECT_EQ(::waitpid(hijo, &estado, 0), hijo);
      EXPECT_EQ(estado, 0);
    }
    const rutas lista = lista_guardada();
    EXPECT_EQ(lista.size(), 10U);
    // Of each program the last ones are there, in their order.
    std::map<std::string, int> ultima{{"/a/", cuantas}, {"/b/", cuantas}};
    for (auto una = lista.rbegin(); una != lista.rend(); ++una) {
      EXPECT_EQ(una->substr(3), std::to_string(ultima[una->substr(0, 3)]--)) << testing::PrintToString(lista);
    }
  }
}

TEST_F(supervivencia, what_another_program_has_entered_comes_into_the_menu) {
  preparar(8);
  dir.escribir("MENU.TXT", dir.leer("MENU.TXT") + "\"/g/1\"\r\n\"/g/2\"\r\n");
  actualizar_historial(f, "/f/9");
  EXPECT_EQ(f.menu.men_dir[9].Caption.valor(), "&10 /f/.../f/9");
  EXPECT_EQ(f.historial[9] + f.historial[8], "/g/2/g/1");
  EXPECT_EQ(f.historial[1], "/f/2");
  dir.escribir("MENU.TXT", "\"/g/3\"\r\n");
  actualizar_historial(f, "/g/3");
  EXPECT_TRUE(f.menu.men_dir[0].Visible && !f.menu.men_dir[1].Visible && f.historial[2].empty());
  EXPECT_EQ(dir.leer("MENU.TXT"), "\"/g/3\"\r\n") << "a path that is there changes nothing";
}

struct estorbo {
  const char* que;
  std::function<void(const fs::path&)> poner;
  bool legible = false;
};

const estorbo estorbos[] = {
    {"pipe", [](const fs::path& ruta) { ::mkfifo(ruta.c_str(), 0600); }},
    {"folder", [](const fs::path& ruta) { fs::create_directory(ruta); }},
    {"device", [](const fs::path& ruta) { fs::create_symlink("/dev/zero", ruta); }},
    {"nowhere", [](const fs::path& ruta) { fs::create_symlink("no/hay", ruta); }},
    {"circle", [](const fs::path& ruta) { fs::create_symlink(ruta, ruta); }},
    {"2 GiB",
     [](const fs::path& ruta) {
       std::ofstream(ruta) << "\"x\"\r\n";
       fs::resize_file(ruta, std::uintmax_t{2} << 30);
     }},
    {"unreadable",
     [](const fs::path& ruta) {
       std::ofstream(ruta) << "\"x\"\r\n";
       fs::permissions(ruta, fs::perms(0222));
     }},
    {"a line of 10 MB", [](const fs::path& ruta) { std::ofstream(ruta) << '"' << std::string(10'000'000, 'x'); }},
    {"lines of NULs",
     [](const fs::path& ruta) { std::ofstream(ruta) << std::string(4000, '\0') << "\r\n"
                                                    << std::string(9, '\0'); },
     true},
};

TEST_F(supervivencia, whatever_stands_in_the_place_of_a_file_the_program_starts_and_leaves_it_there) {
  fs::permissions(dir.ruta(), fs::perms(0777));
  for (const char* nombre : {"SETTINGS.TXT", "MENU.TXT"}) {
    for (const estorbo& e : estorbos) {
      SCOPED_TRACE(std::string(e.que) + " as " + nombre);
      for (const char* uno : {"SETTINGS.TXT", "MENU.TXT"}) fs::remove_all(dir.ruta() / uno);
      preparar(10);
      const fs::path ruta = dir.ruta() / nombre;
      fs::remove(ruta);
      e.poner(ruta);
      std::error_code ninguno;
      for (const char* uno : {"SETTINGS.TXT", "MENU.TXT"}) {
        fs::permissions(dir.ruta() / uno, fs::perms(0222), fs::perm_options::add | fs::perm_options::nofollow, ninguno);
      }
      const auto antes = fs::symlink_status(ruta).type();
      const auto tamano = fs::file_size(ruta, ninguno);
      const sin_privilegios guarda;
      frm_principal otra(plat, ficheros, linea, v);
      otra.historial = f.historial;
      plat.cajas.clear();
      Form_Load(otra);
      EXPECT_LE(plat.cajas.size(), 2U) << textos();
      plat.cajas.clear();
      otra.link.valores.velocidad = "115200";
      guardar_ajustes(otra.link);
      actualizar_historial(otra, "/f/11");
      EXPECT_LE(plat.cajas.size(), 1U) << textos();
      EXPECT_EQ(fs::symlink_status(ruta).type(), antes);
      EXPECT_NE(fs::file_size(ruta, ninguno) == tamano, e.legible) << "what cannot be read is not written over";
    }
  }
}

}  // namespace
