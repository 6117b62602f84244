#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

using rutas = std::vector<std::string>;

struct proyecto : banco_principal {
  void SetUp() override { empezar(); }
};

TEST_F(proyecto, paths_are_cut_by_characters_and_their_end_is_the_extension) {
  const std::string ruta = "/ñ23456789012345678😀x12345678901234567890123456789";
  mostrar_ruta(f, ruta);
  poner_entrada_menu(f, 3, ruta);
  EXPECT_EQ(f.estado.panel(1).Text.valor(), "/ñ2...6789012345678😀x12345678901234567890123456789");
  EXPECT_EQ(f.estado.panel(1).ToolTipText.valor(), ruta);
  EXPECT_EQ(f.menu.men_dir[2].Caption.valor(), "&3 /ñ2...678901234567890123456789");
  for (const char* buena : {"/x/a.s19", "/x/a.S19", "b.Bin"}) EXPECT_TRUE(es_firmware(buena)) << buena;
  for (const char* mala : {"/x/a.hex", "/x/s19/", "", "a.s1", "/x/a.s19x"}) EXPECT_FALSE(es_firmware(mala)) << mala;
}

TEST_F(proyecto, a_file_comes_dropped_without_a_question_or_by_the_dialog_after_one) {
  const caja pregunta{"Atención", "Desea cargar el mismo proyecto?", botones::SiNo, icono::informacion};
  const std::string a = dir.escribir("a.s19", ocho_bytes), b = dir.escribir("b.S19", "S10801000102030405E9\r\n");
  for (const std::string& ruta : {b, a}) abrir_soltado(f, ruta);
  EXPECT_EQ(textos(), texto_cargado + "|" + texto_cargado);
  EXPECT_EQ(v.buffer_salida[0x107], 8);
  EXPECT_EQ(v.ruta_archivo, a);
  dir.escribir("a.s19", "S1050100AAAA00\r\n");
  dir.escribir("MENU.TXT", "\"" + b + "\"\r\n");
  const struct {
    respuesta_caja respuesta;
    std::string elegido, queda;
    int byte, byte_5;
  } casos[] = {{vbNinguna, b, a, 1, 6}, {vbYes, b, a, 0xAA, 0xFF}, {vbNo, b, b, 1, 0xFF}, {vbNo, "", "", 1, 0xFF}};
  for (const auto& c : casos) {
    plat.cajas.clear();
    plat.responder(c.respuesta);
    plat.eleccion = [&c] { return std::filesystem::current_path("/"), c.elegido; };
    f.menu.men_abrir.Click();
    EXPECT_EQ(plat.cajas.at(0), pregunta);
    EXPECT_EQ(v.ruta_archivo, c.queda);
    EXPECT_EQ(std::filesystem::current_path(), dir.ruta());
    EXPECT_EQ(v.buffer_salida[0x100], c.byte) << c.queda << c.respuesta;
    EXPECT_EQ(v.buffer_salida[0x105], c.byte_5) << c.queda << c.respuesta;
  }
  EXPECT_EQ(v.dir_max, 0);
  EXPECT_TRUE(f.estado.panel(1).Text.valor().empty());
  EXPECT_EQ(lista_guardada(), (rutas{b, a})) << "Yes enters the file again";
  EXPECT_EQ(f.cmd_buscar.InitDir, dir.ruta()) << "the dialog starts where the last file was";
  std::filesystem::remove(b);
  plat.cajas.clear();
  for (const std::size_t i : {1U, 0U}) f.menu.men_dir[i].Click();
  EXPECT_EQ(textos(),
            texto_cargado + "|No se ha podido cargar el archivo:\r\n" + b + "\r\nMotivo: el archivo no existe");
  EXPECT_EQ(v.dir_max, 0);
  EXPECT_EQ(v.buffer_salida[0x100], 0xFF);
  for (const std::string& ruta : {a, dir.escribir("c.hex", "")}) abrir_soltado(f, ruta);
  EXPECT_EQ(v.buffer_salida[0x100], 0xFF) << "no other firmware under the name of a file of no known kind";
  for (const std::string& contenido : {ocho_bytes, std::string("S1\r\n")}) {
    int barra = 0;
    plat.responder(vbOK, [&] { barra = f.avance.Progress.Value, f.avance.cancelar = true; });
    abrir_soltado(f, dir.escribir("a.s19", contenido));
    EXPECT_GT(barra, 0) << "the user is told before the bar goes back";
    EXPECT_EQ(f.avance.Progress.Value, 0);
    EXPECT_FALSE(f.avance.cancelar);
  }
}

TEST_F(proyecto, ten_files_are_kept_and_the_eleventh_drops_the_oldest) {
  std::string contenido;
  for (int i = 1; i <= 11; ++i) {
    // The first file, entered again behind the eleventh, drops the second; some paths cannot be kept.
    for (const std::string& ruta : {"/f/" + std::to_string(i) + ".s19", std::string("/f/1.s19"), std::string("/b\"c")})
      actualizar_historial(f, ruta);
  }
  for (int i = 3; i <= 12; ++i) contenido += "\"/f/" + std::to_string(i == 12 ? 1 : i) + ".s19\"\r\n";
  EXPECT_EQ(dir.leer("MENU.TXT"), contenido);
  EXPECT_EQ(f.menu.men_dir[0].Caption.valor() + f.menu.men_dir[9].Caption.valor(),
            "&1 /f/.../f/3.s19&10 /f/.../f/1.s19");
  EXPECT_TRUE(f.menu.men_dir[9].Visible);
  EXPECT_TRUE(f.menu.separa_2.Visible);
  dir.escribir("MENU.TXT", "\"/a\"\r\n\"/to\r\n\"/b, c\"\r\n\"/c");
  EXPECT_EQ(lista_guardada(), (rutas{"/a", "/b, c"})) << "half a line is no entry";
  contenido.clear();
  for (char c = 'a'; c <= 'm'; ++c) contenido += std::string("\"/") + c + "\"\r\n";
  dir.escribir("MENU.TXT", contenido);
  EXPECT_EQ(lista_guardada().back(), "/l");
}

TEST_F(proyecto, a_list_of_a_windows_editor_is_read_by_lines_and_written_back_in_utf8) {
  dir.escribir("MENU.TXT", "\"C:\\Ni\xF1o.s19\"\r\n\"C:\\Señal.s19\"\r\n");
  empezar();
  EXPECT_EQ(f.historial[1], "C:\\Niño.s19");
  EXPECT_EQ(f.historial[2], "C:\\Señal.s19");
  actualizar_historial(f, "C:\\\xF1");
  EXPECT_EQ(f.historial[3], "") << "a name that could not be read again as it is";
  for (int i = 0; i < 9; ++i) actualizar_historial(f, "C:\\" + std::to_string(i));
  EXPECT_TRUE(dir.leer("MENU.TXT").starts_with("\"C:\\Señal.s19\"\r\n"));
  actualizar_historial(f, "C:\\SEñal.s19");
  EXPECT_TRUE(dir.leer("MENU.TXT").ends_with("\"C:\\SEñal.s19\"\r\n"));
  EXPECT_EQ(lista_guardada().back(), "C:\\SEñal.s19") << "not the name that begins with Se";
}

}  // namespace
