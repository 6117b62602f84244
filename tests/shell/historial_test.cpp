#include "shell/historial.h"

#include <algorithm>

#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

struct historial : banco_principal {
  void SetUp() override { f.link.valores.ruta_aplicacion = ficheros.ruta_aplicacion(); }
  std::string leidas() {
    std::string texto;
    for (const std::string& ruta : lista_guardada()) texto += ruta + ";";
    return texto;
  }
};

TEST_F(historial, ten_files_are_kept_and_the_eleventh_drops_the_oldest) {
  std::string rotulos, contenido;
  for (int i = 1; i <= 11; ++i) {
    actualizar_historial(f, "/f/" + std::to_string(i) + ".s19");
    // The first file, entered again behind the eleventh, has dropped the second.
    actualizar_historial(f, "/f/1.s19");
  }
  for (const Menu& m : f.menu.men_dir) rotulos += m.Visible ? m.Caption.valor() + " " : "";
  for (int i = 3; i <= 12; ++i) contenido += "\"/f/" + std::to_string(i == 12 ? 1 : i) + ".s19\"\r\n";
  EXPECT_EQ(dir.leer("MENU.TXT"), contenido);
  EXPECT_TRUE(rotulos.starts_with("&1 /f/.../f/3.s19 ") && rotulos.ends_with("&10 /f/.../f/1.s19 "));
  EXPECT_TRUE(leidas().starts_with("/f/3.s19;/f/4.s19;") && f.menu.separa_2.Visible);
  EXPECT_EQ(dir.leer("MENU.TXT"), contenido);
  actualizar_historial(f, "/F/1.s19");
  EXPECT_EQ(f.historial[10], "/F/1.s19") << "case matters";
}

TEST_F(historial, captions_show_the_drive_and_the_tail) {
  const std::pair<std::string, std::string> casos[] = {
      {"C:\\proyectos\\firmware\\main\\boot.s19", "&3 C:\\...s\\firmware\\main\\boot.s19"},
      {"/a234567890123456789x12", "&3 /a2.../a234567890123456789x12"},
      {"/a234567890123456789x1234", "&3 /a2...a234567890123456789x1234"},
      {"/ñ23456789012345678😀x123", "&3 /ñ2.../ñ23456789012345678😀x123"},
      {"/ñ23456789012345678😀x1234", "&3 /ñ2...ñ23456789012345678😀x1234"},
      {"/\377"
       "23456789012345678😀x1234",
       "&3 /\377"
       "2...\377"
       "23456789012345678😀x1234"},
  };
  for (const auto& [ruta, rotulo] : casos) {
    poner_entrada_menu(f, 3, ruta);
    EXPECT_EQ(f.menu.men_dir[2].Caption.valor(), rotulo);
  }
}

TEST_F(historial, files_edited_by_hand_are_read_as_far_as_they_make_sense) {
  const std::pair<std::string, const char*> casos[] = {
      {"", ""},
      {"\r\n\r\n", ""},
      {"\"/a\"\r\n\"/b, c\"\r\n", "/a;/b, c;"},
      // what a torn line has left, and what cannot be a path
      {"\"/a\"\n\n\"/b", "/a;"},
      {"\"/a\"\r\n\"/to\r\n\"/b\"\r\n", "/a;/b;"},
      {"\"/a\"\r\n/b\"c\"d\r\n\"/e\"\r\n\"\"\r\n", "/a;/e;"},
      {std::string(50, '\0') + "\r\n\"/a\"\r\n" + std::string(9, '\0'), "/a;"},
      {"\"" + std::string(500'000, 'x') + "\"\r\n\"/a\"", "/a;"},
      {"/a\r/b", "/a;/b;"},
      {"1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12\n13\n", "1;2;3;4;5;6;7;8;9;10;11;12;"}};
  for (const auto& [texto, entradas] : casos) {
    dir.escribir("menu.txt", texto);
    EXPECT_EQ(leidas(), entradas);
    EXPECT_EQ(dir.leer("menu.txt"), texto);
  }
}

TEST_F(historial, a_line_without_an_end_is_not_run_into_and_some_paths_cannot_be_kept) {
  dir.escribir("MENU.TXT", "\"/a\"");
  leer_historial(f);
  for (const char* ruta : {"/b\"c", "/b\nc", "/b\rc", "/b"}) actualizar_historial(f, ruta);
  EXPECT_EQ(dir.leer("MENU.TXT"), "\"/a\"\r\n\"/b\"\r\n");
}

TEST_F(historial, an_empty_path_is_not_entered_into_a_full_list) {
  for (int i = 1; i <= 10; ++i) actualizar_historial(f, "/f/" + std::to_string(i));
  actualizar_historial(f, "");
  EXPECT_EQ(f.historial[1] + f.historial[10], "/f/1/f/10");
}

TEST_F(historial, what_cannot_be_written_is_told) {
  std::filesystem::create_directory(dir.ruta() / "MENU.TXT");
  actualizar_historial(f, "/a");
  EXPECT_EQ(plat.cajas, std::vector{critica("Atención", "No se ha podido guardar la lista de archivos en el fichero: " +
                                                            (dir.ruta() / "MENU.TXT").string())});
  EXPECT_EQ(f.historial[1], "/a");
}

TEST_F(historial, an_entry_loads_its_file_without_a_question_and_a_missing_one_leaves_no_image) {
  empezar();
  abrir_archivo("a.s19", ocho_bytes);
  plat.responder(vbNo);
  abrir_archivo("b.bin", "AB");
  plat.cajas.clear();
  f.menu.men_dir[0].Click();
  EXPECT_EQ(textos(), texto_cargado);
  EXPECT_EQ(v.ruta_archivo, (dir.ruta() / "a.s19").string());
  std::filesystem::remove(dir.ruta() / "b.bin");
  f.menu.men_dir[1].Click();
  EXPECT_EQ(ultima().texto,
            "No se ha podido cargar el archivo:\r\n" + v.ruta_archivo + "\r\nMotivo: el archivo no existe");
  EXPECT_TRUE(v.dir_max == 0 && v.buffer_salida[0x100] == 0xFF);
}

}  // namespace
