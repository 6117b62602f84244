#include "apoyo/banco_principal.h"

namespace {

using namespace apoyo;

using paginas = banco_principal;

TEST_F(paginas, a_list_of_a_windows_editor_is_read_by_lines_and_written_back_in_utf8) {
  dir.escribir("MENU.TXT", "\"C:\\Ni\xF1o.s19\"\r\n\"C:\\Señal.s19\"\r\n");
  empezar();
  EXPECT_TRUE(f.historial[1] == "C:\\Niño.s19" && f.historial[2] == "C:\\Señal.s19");
  actualizar_historial(f, "C:\\\xF1");
  EXPECT_EQ(f.historial[3], "") << "a name that could not be read again as it is";
  for (int i = 0; i < 9; ++i) actualizar_historial(f, "C:\\" + std::to_string(i));
  EXPECT_TRUE(dir.leer("MENU.TXT").starts_with("\"C:\\Señal.s19\"\r\n"));
  actualizar_historial(f, "C:\\Niño.s19");
  EXPECT_TRUE(dir.leer("MENU.TXT").ends_with("\"C:\\Niño.s19\"\r\n"));
  EXPECT_EQ(lista_guardada().back(), "C:\\Niño.s19");
}

}  // namespace
