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

TEST_F(proyecto, the_status_bar_keeps_the_whole_path) {
  empezar();
  const std::string larga = "/" + std::string(300, 'x') + "/á.s19";
  mostrar_ruta(f, larga);
  EXPECT_EQ(f.estado.panel(1).ToolTipText.valor(), larga);
  f.menu.men_abrir.Click();
  EXPECT_EQ(f.estado.panel(1).ToolTipText.valor(), "");
}

TEST_F(proyecto, a_dropped_file_takes_the_road_of_the_dialog) {
  empezar();
  const std::string a = dir.escribir("a.s19", ocho_bytes), b = dir.escribir("b.S19", "S10801000102030405E9\r\n");
  plat.eleccion = [] { return ADD_FAILURE() << "no dialog", ""; };
  abrir_soltado(f, a);
  EXPECT_TRUE(v.ruta_archivo == a && v.buffer_salida[0x107] == 8 && f.historial[1] == a);
  const struct {
    respuesta_caja respuesta;
    std::string cargado;
    std::size_t entradas;
  } casos[] = {{vbNinguna, a, 1}, {vbYes, a, 1}, {vbNo, b, 2}};
  for (const auto& c : casos) {
    plat.cajas.clear();
    plat.responder(c.respuesta);
    abrir_soltado(f, b);
    EXPECT_EQ(plat.cajas.at(0),
              (caja{"Atención", "Desea cargar el mismo proyecto?", botones::SiNo, icono::informacion}));
    EXPECT_EQ(v.ruta_archivo, c.cargado);
    EXPECT_TRUE(!f.historial[c.entradas].empty() && f.historial[c.entradas + 1].empty());
    EXPECT_EQ(v.buffer_salida[0x105], c.cargado == a ? 6 : 0xFF);
  }
  const orden_en_curso otra(f);
  plat.cajas.clear();
  abrir_soltado(f, a);
  EXPECT_TRUE(textos() == texto_en_curso && v.ruta_archivo == b);
}

TEST_F(proyecto, what_can_be_dropped_is_what_the_dialog_lists) {
  for (const char* buena : {"/x/a.s19", "/x/a.S19", "b.Bin"}) EXPECT_TRUE(es_firmware(buena)) << buena;
  for (const char* mala : {"/x/a.hex", "/x/s19/", "", "a.s1", "/x/a.s19x"}) EXPECT_FALSE(es_firmware(mala)) << mala;
}

TEST_F(proyecto, the_dialog_starts_where_the_last_file_was) {
  namespace fs = std::filesystem;
  const auto en = [&](const char* carpeta) { return (dir.ruta() / carpeta).string(); };
  fs::create_directory(en("tres"));
  const std::string uno = dir.escribir("uno/1.s19", ocho_bytes), dos = dir.escribir("dos/2.s19", ocho_bytes);
  dir.escribir("MENU.TXT", "\"" + uno + "\"\r\n\"" + dos + "\"\r\n\"" + en("tres") + "/3.s19\"\r\n");
  empezar();
  const auto partida = [this] {
    f.menu.men_abrir.Click();
    return f.cmd_buscar.InitDir;
  };
  EXPECT_EQ(partida(), en("dos")) << "the newest of the history that is still there";
  f.menu.men_dir[0].Click();
  plat.responder(vbNo);
  EXPECT_EQ(partida(), en("uno")) << "the last one of this run";
  EXPECT_EQ(partida(), en("uno")) << "also after a dialog without a name";
  plat.elegir(en("tres") + "/nuevo.bin");
  partida();
  plat.responder(vbNo);
  EXPECT_EQ(partida(), en("tres"));
  fs::remove_all(en("tres"));
  EXPECT_EQ(partida(), en("dos")) << "the folder has gone";
  fs::remove(uno);
  fs::remove(dos);
  EXPECT_EQ(partida(), "");
}

TEST_F(proyecto, an_unknown_extension_wipes_the_image_and_keeps_its_top) {
  empezar();
  abrir_archivo("a.s19", ocho_bytes);
  plat.responder(vbNo);
  abrir_archivo("x.hex", ocho_bytes);
  EXPECT_TRUE(v.dir_max == 0x107 && v.buffer_salida[0x100] == 0xFF && plat.cajas.size() == 2u);
}

}  // namespace
