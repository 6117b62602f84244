#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

using proyecto = banco_principal;

TEST_F(proyecto, a_path_is_cut_by_characters_and_its_end_is_the_extension) {
  const struct { std::size_t largo, falta; } casos[] = {{4, 0}, {41, 0}, {44, 0}, {45, 1}, {46, 2}};
  for (const std::string c : {"a", "ñ", "😀"}) {
    for (const auto& caso : casos) {
      std::string ruta = "/é";
      for (std::size_t i = 2; i < caso.largo; ++i) ruta += c;
      mostrar_ruta(f, ruta);
      const std::size_t corte = caso.falta < 2 ? caso.falta : std::string_view("/é").size();
      EXPECT_EQ(f.estado.panel(1).Text.valor(), "/é" + c + "..." + ruta.substr(corte)) << c << caso.largo;
    }
  }
  EXPECT_EQ(extension_de("/x/a.s19"), "S19");
  EXPECT_EQ(extension_de("/x/ñ.Bin"), "BIN");
  EXPECT_EQ(extension_de("/x/ax "), "AX");
  EXPECT_EQ(extension_de("ab"), "AB");
}

TEST_F(proyecto, the_same_project_is_read_anew_on_yes_and_a_dismissed_question_changes_nothing) {
  empezar();
  abrir_archivo("a.S19", ocho_bytes);
  dir.escribir("a.S19", "S10801000102030405E9\r\n");
  for (const respuesta_caja respuesta : {vbNinguna, vbYes}) {
    plat.responder(respuesta);
    f.barra.ButtonClick(1);
    const bool leida = respuesta == vbYes;
    EXPECT_TRUE(v.dir_max == 0x107 && v.buffer_salida[0x105] == (leida ? 0xFF : 6) && !v.ruta_archivo.empty());
    EXPECT_EQ(plat.cajas.at(leida ? 2 : 1),
              (caja{"Atención", "Desea cargar el mismo proyecto?", botones::SiNo, icono::informacion}));
  }
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
  EXPECT_TRUE(v.dir_max == 0x107 && v.buffer_salida[0x100] == 0xFF && plat.cajas.size() == 2u);
}

}  // namespace
