#include "apoyo/banco_principal.h"

using namespace morvane;
using namespace apoyo;

namespace {

using proyecto = banco_principal;

TEST_F(proyecto, a_path_is_cut_by_characters) {
  const auto largo = [](std::size_t n, const std::string& c) {
    std::string ruta = "/éx";
    while (ruta.size() < 3 + 1 + (n - 3) * c.size()) ruta += c;
    return ruta;
  };
  const struct { std::size_t largo, inicio; } casos[] = {{4, 1}, {41, 1}, {42, 1}, {43, 1}, {44, 1}, {45, 2}, {60, 17}};
  for (const std::string c : {"a", "ñ", "😀"}) {
    for (const auto& caso : casos) {
      const std::string ruta = largo(caso.largo, c);
      mostrar_ruta(f, ruta);
      std::string cola;
      if (caso.inicio == 1)
        cola = ruta;
      else if (caso.inicio == 2)
        cola = ruta.substr(1);
      else
        for (std::size_t i = caso.inicio; i <= caso.largo; ++i) cola += c;
      EXPECT_EQ(f.estado.panel(1).Text.valor(), "/éx..." + cola) << c << caso.largo;
    }
  }
  mostrar_ruta(f, "C:\\a\\b.s19");
  EXPECT_EQ(f.estado.panel(1).Text.valor(), "C:\\...C:\\a\\b.s19");
}

TEST_F(proyecto, the_extension_is_the_end_of_the_path) {
  EXPECT_EQ(extension_de("/x/a.s19"), "S19");
  EXPECT_EQ(extension_de("/x/ñ.Bin"), "BIN");
  EXPECT_EQ(extension_de("/x/ax "), "AX");
  EXPECT_EQ(extension_de("ab"), "AB");
}

TEST_F(proyecto, the_same_project_is_read_anew_on_yes) {
  empezar();
  abrir_archivo("a.S19", ocho_bytes);
  dir.escribir("a.S19", "S10801000102030405E9\r\n");
  plat.responder(vbYes);
  f.barra.ButtonClick(1);
  EXPECT_EQ(plat.cajas[1], (caja{"Atención", "Desea cargar el mismo proyecto?", botones::SiNo, icono::informacion}));
  EXPECT_TRUE(v.dir_max == 0x107 && v.buffer_salida[0x104] == 5 && v.buffer_salida[0x105] == 0xFF);
}

TEST_F(proyecto, a_question_that_is_dismissed_changes_nothing) {
  empezar();
  abrir_archivo("a.s19", ocho_bytes);
  plat.responder(vbNinguna);
  f.menu.men_abrir.Click();
  EXPECT_TRUE(v.dir_max == 0x107 && !v.ruta_archivo.empty());
}

TEST_F(proyecto, a_dialog_without_a_name_forgets_the_file_but_not_the_image) {
  empezar();
  abrir_archivo("a.s19", ocho_bytes);
  std::filesystem::current_path("/");
  plat.responder(vbNo);
  f.menu.men_abrir.Click();
  EXPECT_TRUE(v.dir_max == 0 && v.ruta_archivo.empty() && f.estado.panel(1).Text.valor().empty());
  EXPECT_EQ(v.buffer_salida[0x100], 1);
  EXPECT_EQ(std::filesystem::current_path(), "/");
  plat.cajas.clear();
  f.menu.men_abrir.Click();
  EXPECT_TRUE(plat.cajas.empty()) << "no file, no question";
}

TEST_F(proyecto, an_unknown_extension_wipes_the_image_and_keeps_its_top) {
  empezar();
  abrir_archivo("a.s19", ocho_bytes);
  plat.responder(vbNo);
  abrir_archivo("x.hex", ocho_bytes);
  EXPECT_TRUE(v.dir_max == 0x107 && v.buffer_salida[0x100] == 0xFF);
  EXPECT_EQ(plat.cajas.size(), 2u);
}

}  // namespace
