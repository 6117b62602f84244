// Opening of files, and the list of those that were opened.

#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

namespace fs = std::filesystem;

struct proyecto : banco_principal {
  void SetUp() override { empezar(); }
  std::string leidas() {
    std::string texto;
    for (const std::string& ruta : lista_guardada()) texto += ruta + ";";
    return texto;
  }
};

TEST_F(proyecto, paths_are_cut_by_characters_and_their_end_is_the_extension) {
  const std::string cincuenta = "ñ23456789012345678😀x12345678901234567890123456789";
  const struct {
    std::string ruta, panel, menu;
  } casos[] = {
      {"C:\\p\\firmware\\main\\boot.s19", "C:\\...C:\\p\\firmware\\main\\boot.s19",
       "&3 C:\\...p\\firmware\\main\\boot.s19"},
      {"/a234567890123456789x12", "/a2.../a234567890123456789x12", "&3 /a2.../a234567890123456789x12"},
      {"/ñ23456789012345678😀x1234", "/ñ2.../ñ23456789012345678😀x1234", "&3 /ñ2...ñ23456789012345678😀x1234"},
      {"/" + cincuenta, "/ñ2...6789012345678😀x12345678901234567890123456789", "&3 /ñ2...678901234567890123456789"}};
  for (const auto& c : casos) {
    mostrar_ruta(f, c.ruta);
    poner_entrada_menu(f, 3, c.ruta);
    EXPECT_EQ(f.estado.panel(1).Text.valor(), c.panel);
    EXPECT_EQ(f.estado.panel(1).ToolTipText.valor(), c.ruta);
    EXPECT_EQ(f.menu.men_dir[2].Caption.valor(), c.menu);
  }
  EXPECT_EQ(extension_de("/x/a.s19") + extension_de("/x/ñ.Bin") + extension_de("/x/ax ") + extension_de("ab"),
            "S19BINAXAB");
  for (const char* buena : {"/x/a.s19", "/x/a.S19", "b.Bin"}) EXPECT_TRUE(es_firmware(buena)) << buena;
  for (const char* mala : {"/x/a.hex", "/x/s19/", "", "a.s1", "/x/a.s19x"}) EXPECT_FALSE(es_firmware(mala)) << mala;
}

TEST_F(proyecto, a_file_comes_by_the_dialog_or_dropped_after_the_same_question) {
  const caja pregunta{"Atención", "Desea cargar el mismo proyecto?", botones::SiNo, icono::informacion};
  const std::string a = dir.escribir("a.s19", ocho_bytes), b = dir.escribir("b.S19", "S10801000102030405E9\r\n");
  abrir_soltado(f, a);
  EXPECT_TRUE(textos() == texto_cargado && v.buffer_salida[0x107] == 8 && f.historial[1] == a) << "no question yet";
  dir.escribir("a.s19", "S1050100AAAA00\r\n");
  const struct {
    bool soltado;
    respuesta_caja respuesta;
    std::string queda;
    int byte, byte_5;
  } casos[] = {{true, vbNinguna, a, 1, 6}, {false, vbNinguna, a, 1, 6}, {true, vbYes, a, 0xAA, 0xFF},
               {true, vbNo, b, 1, 0xFF},   {false, vbYes, b, 1, 0xFF},  {false, vbNo, "", 1, 0xFF}};
  for (const auto& c : casos) {
    plat.cajas.clear();
    plat.responder(c.respuesta);
    c.soltado ? abrir_soltado(f, b) : f.menu.men_abrir.Click();
    EXPECT_TRUE(plat.cajas.at(0) == pregunta && v.ruta_archivo == c.queda);
    EXPECT_TRUE(v.buffer_salida[0x100] == c.byte && v.buffer_salida[0x105] == c.byte_5) << c.queda << c.respuesta;
  }
  EXPECT_TRUE(v.dir_max == 0 && f.estado.panel(1).Text.valor().empty() &&
              f.estado.panel(1).ToolTipText.valor().empty());
  EXPECT_EQ(leidas(), a + ";" + b + ";");
  plat.cajas.clear();
  f.menu.men_dir[0].Click();
  EXPECT_TRUE(textos() == texto_cargado && v.ruta_archivo == a) << "an entry asks nothing";
  fs::remove(b);
  f.menu.men_dir[1].Click();
  EXPECT_EQ(ultima().texto, "No se ha podido cargar el archivo:\r\n" + b + "\r\nMotivo: el archivo no existe");
  EXPECT_TRUE(v.dir_max == 0 && v.buffer_salida[0x100] == 0xFF);
  const orden_en_curso otra(f);
  abrir_soltado(f, a);
  EXPECT_TRUE(ultima().texto == texto_en_curso && v.ruta_archivo == b);
}

TEST_F(proyecto, the_dialog_starts_where_the_last_file_was_and_moves_no_directory) {
  const auto en = [&](const char* carpeta) { return (dir.ruta() / carpeta).string(); };
  fs::create_directory(en("tres"));
  const std::string uno = dir.escribir("uno/1.s19", ocho_bytes), dos = dir.escribir("dos/2.s19", ocho_bytes);
  dir.escribir("MENU.TXT", "\"" + uno + "\"\r\n\"" + dos + "\"\r\n\"" + en("tres") + "/3.s19\"\r\n");
  empezar();
  plat.usuario = [](const caja& c) { return c.teclas == botones::SiNo ? vbNo : vbOK; };
  std::string elegido;
  plat.eleccion = [&] { return fs::current_path("/"), elegido; };
  const auto partida = [this] { return f.menu.men_abrir.Click(), f.cmd_buscar.InitDir; };
  EXPECT_EQ(partida(), en("dos")) << "the newest of the history that is still there";
  EXPECT_EQ(fs::current_path(), dir.ruta());
  f.menu.men_dir[0].Click();
  EXPECT_EQ(partida(), en("uno")) << "the last one of this run";
  elegido = en("tres") + "/nuevo.bin";
  partida();
  EXPECT_EQ(partida(), en("tres"));
  fs::remove_all(en("tres"));
  EXPECT_EQ(partida(), en("dos")) << "the folder has gone";
  fs::remove(uno);
  fs::remove(dos);
  EXPECT_EQ(partida(), "");
}

TEST_F(proyecto, ten_files_are_kept_and_the_eleventh_drops_the_oldest) {
  std::string rotulos, contenido;
  for (int i = 1; i <= 11; ++i) {
    // The first file, entered again behind the eleventh, drops the second; some paths cannot be kept.
    for (const std::string& ruta : {"/f/" + std::to_string(i) + ".s19", std::string("/f/1.s19"), std::string(),
                                    std::string("/b\"c"), std::string("/b\nc")})
      actualizar_historial(f, ruta);
  }
  for (const Menu& m : f.menu.men_dir) rotulos += m.Visible ? m.Caption.valor() + " " : "";
  for (int i = 3; i <= 12; ++i) contenido += "\"/f/" + std::to_string(i == 12 ? 1 : i) + ".s19\"\r\n";
  EXPECT_EQ(dir.leer("MENU.TXT"), contenido);
  EXPECT_TRUE(rotulos.starts_with("&1 /f/.../f/3.s19 ") && rotulos.ends_with("&10 /f/.../f/1.s19 "));
  EXPECT_TRUE(leidas().starts_with("/f/3.s19;/f/4.s19;") && f.menu.separa_2.Visible);
  fs::remove(dir.ruta() / "MENU.TXT");
  fs::create_directory(dir.ruta() / "MENU.TXT");
  actualizar_historial(f, "/F/1.s19");
  EXPECT_EQ(plat.cajas, std::vector{critica("Atención", "No se ha podido guardar la lista de archivos en el fichero: " +
                                                            (dir.ruta() / "MENU.TXT").string())});
  EXPECT_EQ(f.historial[10], "/F/1.s19") << "case matters";
}

TEST_F(proyecto, lists_edited_by_hand_are_read_as_far_as_they_make_sense) {
  const std::pair<std::string, const char*> casos[] = {
      {"\"/a\"\r\n\"/b, c\"\r\n", "/a;/b, c;"},
      {"\"/a\"\r\n\"/to\r\n\"/b\"\r\n\"/c", "/a;/b;"},
      {"\"/a\"\n/b\"c\"d\r\n\"/e\"\r\n\"\"\r\n", "/a;/e;"},
      {std::string(50, '\0') + "\r\n\"/a\"\r\n" + std::string(9, '\0'), "/a;"},
      {"\"" + std::string(5000, 'x') + "\"\r\n\"/a\"", "/a;"},
      {"1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12\n13\n", "1;2;3;4;5;6;7;8;9;10;11;12;"}};
  for (const auto& [texto, entradas] : casos) {
    dir.escribir("MENU.TXT", texto);
    EXPECT_EQ(leidas(), entradas);
    EXPECT_EQ(dir.leer("MENU.TXT"), texto);
  }
  dir.escribir("MENU.TXT", "\"/a\"");
  leer_historial(f);
  actualizar_historial(f, "/b");
  EXPECT_EQ(dir.leer("MENU.TXT"), "\"/a\"\r\n\"/b\"\r\n") << "a line without an end is not run into";
}

}  // namespace
