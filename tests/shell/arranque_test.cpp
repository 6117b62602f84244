#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

using arranque = banco_principal;

TEST_F(arranque, the_probe_is_a_and_d_at_the_speed_of_the_settings) {
  dir.escribir("SETTINGS.TXT", "\"115200\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n");
  Form_Load(f);
  EXPECT_EQ(linea.escrito(), trama("A41") + trama("D44"));
  EXPECT_EQ(linea.linea().velocidad, 115200);
  EXPECT_TRUE(plat.cajas.empty() && en_reposo());
  EXPECT_TRUE(v.buffer_salida[0] == 0xFF && v.buffer_salida[0x40001] == 0xFF && v.dir_max == 0);
  EXPECT_EQ(std::filesystem::current_path(), dir.ruta());
}

TEST_F(arranque, the_window_comes_up_whatever_is_missing) {
  const struct {
    std::optional<std::string> ajustes;
    bool hay_puerto;
    std::uint64_t muda_desde, suma_mala_en;
    std::string cajas, flujo;
  } casos[] = {{std::nullopt, true, 0, 0, texto_no_es_puerto, ""},
               {"", true, 0, 0, "", "A D"},
               {"\"9600\"", true, 0, 0, "", "A D"},
               {ajustes_buenos, false, 0, 0, texto_no_hay_puerto, ""},
               {ajustes_buenos, true, 1, 0, texto_pregunta, "A"},
               {ajustes_buenos, true, 0, 1, texto_cheksum, "A"}};
  for (const auto& c : casos) {
    std::filesystem::remove(dir.ruta() / "SETTINGS.TXT");
    if (c.ajustes) dir.escribir("SETTINGS.TXT", *c.ajustes);
    linea.hay_puerto = c.hay_puerto;
    lejos.placa.fallos = {.muda_desde = c.muda_desde};
    if (c.suma_mala_en != 0) lejos.placa.fallos.suma_mala_en = lejos.placa.tramas() + c.suma_mala_en;
    lejos.comandos.clear();
    plat.cajas.clear();
    plat.olvidar_respuestas();
    plat.responder(vbCancel);
    f.link.valores = {};
    Form_Load(f);
    EXPECT_EQ(textos(), c.cajas);
    EXPECT_EQ(lejos.flujo(), c.flujo);
    EXPECT_TRUE(en_reposo());
  }
}

TEST_F(arranque, no_ends_the_program_before_the_window) {
  lejos.placa.fallos.muda_desde = 1;
  plat.responder(vbNo);
  EXPECT_THROW(Form_Load(f), fin_de_programa);
}

TEST(ventana, the_menu_stands_as_the_users_know_it) {
  contador_cambios cambios;
  menu_principal menu(cambios);
  std::string texto;
  for (const Menu* alto : menu.barra()) {
    texto += alto->Caption.valor() + (alto->Visible ? ":" : " (oculto):");
    for (const Menu* m : alto->lista) {
      const bool vacia = m->Name.starts_with("men_dir_") && !m->Visible && m->Caption.valor().empty();
      if (!vacia) texto += " " + m->Caption.valor() + (m->Visible ? "" : " (oculto)") + (m->Enabled ? "," : " (gris),");
    }
    texto += "\n";
  }
  EXPECT_EQ(texto,
            "&Archivo: &Abrir, - (oculto), - (oculto), &Salir,\n"
            "&Ver: Buffer de Entrada, Buffer de Salida,\n"
            "&Dispositivo: Seleccionar procesador (gris), Reset procesador,\n"
            "&Memoria Flash: Borrar, Verificar Borrado, -, Programar, Verificar programa (oculto) (gris), Verificar "
            "programa,\n"
            "Upload: Leer de la flash, Leer de la flash (Rango),\n"
            "Opciones: Puerto Serial, Proteger la flash (oculto),\n"
            "Ay&uda (oculto): &Contenido, &Acerca de...,\n");
}

}  // namespace
