#include "shell/historial.h"

#include <algorithm>

#include "apoyo/banco_principal.h"

using namespace morvane;
using namespace apoyo;

namespace {

struct historial : banco_principal {
  void SetUp() override { f.link.valores.ruta_aplicacion = ficheros.ruta_aplicacion(); }
  std::string menu() const { return dir.leer("MENU.TXT"); }
  /// The captions of the entries that show, each on a line.
  std::string rotulos() const {
    std::string texto;
    for (const Menu& m : f.menu.men_dir) texto += m.Visible ? m.Caption.valor() + "\n" : "";
    return texto;
  }
  bool separadores() const { return f.menu.separa_1.Visible && f.menu.separa_2.Visible; }
};

TEST_F(historial, ten_files_are_kept_and_the_eleventh_drops_the_oldest) {
  std::string esperado;
  for (int i = 1; i <= 11; ++i) {
    const std::string ruta = "/f/" + std::to_string(i) + ".s19";
    actualizar_historial(f, ruta);
    actualizar_historial(f, "/f/1.s19");
    if (i == 1) {
      EXPECT_EQ(menu(), "\"/f/1.s19\"\r\n");
      EXPECT_EQ(rotulos(), "&1 /f/.../f/1.s19\n");
    }
  }
  // The first file, entered again behind the eleventh, has dropped the second.
  for (int i = 3; i <= 11; ++i) esperado += "\"/f/" + std::to_string(i) + ".s19\"\r\n";
  EXPECT_EQ(menu(), esperado + "\"/f/1.s19\"\r\n");
  EXPECT_TRUE(rotulos().starts_with("&1 /f/.../f/3.s19\n") && rotulos().ends_with("&10 /f/.../f/1.s19\n"));
  actualizar_historial(f, "/F/1.s19");
  EXPECT_EQ(f.historial[10], "/F/1.s19") << "case matters";
  EXPECT_TRUE(separadores());

  const std::string antes = menu();
  frm_principal otra(plat, ficheros, linea, v);
  otra.link.valores.ruta_aplicacion = ficheros.ruta_aplicacion();
  leer_historial(otra);
  EXPECT_TRUE(otra.historial == f.historial && menu() == antes);
}

TEST_F(historial, captions_show_the_drive_and_the_tail) {
  const std::pair<std::string, std::string> casos[] = {
      {"C:\\proyectos\\firmware\\main\\boot.s19", "&3 C:\\...s\\firmware\\main\\boot.s19"},
      {"/a234567890123456789x1", "&3 /a2.../a234567890123456789x1"},
      {"/a234567890123456789x12", "&3 /a2.../a234567890123456789x12"},
      {"/a234567890123456789x1234", "&3 /a2...a234567890123456789x1234"},
      {"/ñ23456789012345678😀x123", "&3 /ñ2.../ñ23456789012345678😀x123"},
      {"/ñ23456789012345678😀x1234", "&3 /ñ2...ñ23456789012345678😀x1234"},
      {"/\xff"
       "23456789012345678😀x1234",
       "&3 /\xff"
       "2...\xff"
       "23456789012345678😀x1234"},
  };
  for (const auto& [ruta, rotulo] : casos) {
    poner_entrada_menu(f, 3, ruta);
    EXPECT_EQ(f.menu.men_dir[2].Caption.valor(), rotulo);
    EXPECT_EQ(f.historial[3], ruta);
  }
}

TEST_F(historial, files_edited_by_hand_are_read_as_far_as_they_make_sense) {
  std::string trece;
  for (int i = 1; i <= 13; ++i) trece += "\"/" + std::to_string(i) + "\"\n";
  const struct {
    std::string texto;
    std::size_t entradas;
    std::string ultima;
  } casos[] = {
      {"", 0, ""},         {"\r\n\r\n", 0, ""}, {"\"/a\"\r\n\"/b, c\"\r\n", 2, "/b, c"}, {"\"/a\"\n\n\"/b", 2, "/b"},
      {"/a\r/b", 2, "/b"}, {trece, 12, "/12"}};
  for (const auto& c : casos) {
    frm_principal g(plat, ficheros, linea, v);
    g.link.valores.ruta_aplicacion = ficheros.ruta_aplicacion();
    dir.escribir("menu.txt", c.texto);
    leer_historial(g);
    EXPECT_EQ(g.historial.at(c.entradas), c.ultima);
    const auto llena = [](const std::string& s) { return !s.empty(); };
    EXPECT_EQ(std::ranges::count_if(g.historial, llena), static_cast<long>(c.entradas));
    EXPECT_EQ(g.menu.separa_1.Visible.valor(), c.entradas > 0);
    EXPECT_EQ(dir.leer("menu.txt"), c.texto);
  }
}

TEST_F(historial, a_line_without_an_end_is_not_run_into_and_some_paths_cannot_be_kept) {
  dir.escribir("MENU.TXT", "\"/a\"");
  leer_historial(f);
  for (const char* ruta : {"/b\"c", "/b\nc", "/b\rc"}) actualizar_historial(f, ruta);
  actualizar_historial(f, "/b");
  EXPECT_EQ(menu(), "\"/a\"\r\n\"/b\"\r\n");
}

TEST_F(historial, what_cannot_be_written_is_told) {
  std::filesystem::create_directory(dir.ruta() / "MENU.TXT");
  actualizar_historial(f, "/a");
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención",
                                            "No se ha podido guardar la lista de archivos en el fichero: " +
                                                f.link.valores.ruta_aplicacion + "MENU.TXT",
                                            botones::Aceptar, icono::critico}}));
  EXPECT_EQ(f.historial[1], "/a");
}

TEST_F(historial, an_entry_loads_its_file_without_a_question_and_a_missing_one_leaves_no_image) {
  empezar();
  abrir_archivo("a.s19", ocho_bytes);
  plat.responder(vbNo);
  abrir_archivo("b.bin", "AB");
  EXPECT_EQ(v.buffer_salida[0], 'A');
  plat.cajas.clear();
  f.menu.men_dir[0].Click();
  EXPECT_EQ(textos(), std::vector<std::string>{"Ha terminado de cargar el archivo"});
  EXPECT_EQ(v.ruta_archivo, (dir.ruta() / "a.s19").string());

  std::filesystem::remove(dir.ruta() / "b.bin");
  f.menu.men_dir[1].Click();
  EXPECT_EQ(plat.cajas.back().texto, "No se ha podido cargar el archivo:\r\n" + (dir.ruta() / "b.bin").string() +
                                         "\r\nMotivo: el archivo no existe");
  EXPECT_TRUE(v.dir_max == 0 && v.buffer_salida[0x100] == 0xFF);

  plat.en_cada_pasada = [this] {
    if (lejos.comandos.size() == 3 && plat.cajas.size() < 3) f.menu.men_dir[0].Click();
  };
  lejos.comandos.clear();
  f.menu.men_borrar_t.Click();
  EXPECT_EQ(plat.cajas[2].texto,
            "Hay una operación en curso. Espere a que termine, o deténgala, antes de abrir un archivo");
}

}  // namespace
