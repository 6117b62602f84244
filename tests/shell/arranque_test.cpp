#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

using arranque = banco_principal;

TEST_F(arranque, the_window_comes_up_whatever_is_missing) {
  const struct {
    std::string ajustes;
    bool hay_puerto, muda, suma_mala;
    std::string cajas, flujo;
  } casos[] = {{"\"115200\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n", true, false, false, "", "A D"},
               {"-", true, false, false, texto_no_es_puerto, ""},
               {"", true, false, false, "", "A D"},
               {"\"9600\"", true, false, false, "", "A D"},
               {ajustes_buenos, false, false, false, texto_no_hay_puerto, ""},
               {ajustes_buenos, true, true, false, texto_pregunta, "A"},
               {ajustes_buenos, true, false, true, texto_cheksum, "A"}};
  plat.usuario = [](const caja&) { return vbCancel; };
  for (const auto& c : casos) {
    std::filesystem::remove(dir.ruta() / "SETTINGS.TXT");
    if (c.ajustes != "-") dir.escribir("SETTINGS.TXT", c.ajustes);
    linea.hay_puerto = c.hay_puerto;
    lejos.placa.fallos = {.muda_desde = c.muda ? 1U : 0U, .suma_mala_en = c.suma_mala ? lejos.placa.tramas() + 1 : 0};
    lejos.comandos.clear();
    plat.cajas.clear();
    f.link.valores = {};
    Form_Load(f);
    EXPECT_EQ(textos(), c.cajas);
    EXPECT_EQ(lejos.flujo(), c.flujo);
    EXPECT_TRUE(en_reposo());
  }
  EXPECT_TRUE(v.buffer_salida[0x40001] == 0xFF && std::filesystem::current_path() == dir.ruta());
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
      if (m->Caption.valor().empty() && !m->Visible) continue;
      texto += " " + m->Caption.valor() + (m->Visible ? "" : " (oculto)") + (m->Enabled ? "," : " (gris),");
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

TEST_F(arranque, settings_typed_reach_nothing_chosen_are_in_force_and_only_what_opens_is_saved) {
  empezar();
  f.menu.men_pto_s.Click();
  frm_cfg_pto_serial& d = f.cfg_pto_serial;
  const auto elegir = [](ComboBox& combo, const char* entrada) { combo.Text = entrada, combo.Click(); };
  EXPECT_EQ(d.cmb_s_velocity.Text.valor() + d.cmb_s_puerto.Text.valor(), "57600COM1");
  d.cmb_s_velocity.Text = "300";
  f.menu.men_pto_s.Click();
  EXPECT_EQ(d.cmb_s_velocity.Text.valor(), "300") << "an open window only comes to the front";
  d.btn_guardar.Click();
  EXPECT_EQ(dir.leer("SETTINGS.TXT"), ajustes_buenos);
  elegir(d.cmb_s_velocity, "115200");
  d.btn_salir.Click();
  f.menu.men_borrar_t.Click();
  EXPECT_TRUE(linea.linea().velocidad == 115200 && dir.leer("SETTINGS.TXT") == ajustes_buenos);
  f.menu.men_pto_s.Click();
  EXPECT_EQ(f.link.valores.velocidad, "57600") << "the file is read again";
  elegir(d.cmb_s_velocity, "28800");
  elegir(d.cmb_s_puerto, "COM2");
  lejos.comandos.clear();
  plat.cajas.clear();
  for (const bool ocupado : {true, false}) {
    EXPECT_EQ(dir.leer("SETTINGS.TXT"), ajustes_buenos);
    linea.ocupado = ocupado;
    d.btn_guardar.Click();
  }
  EXPECT_EQ(dir.leer("SETTINGS.TXT"), "\"28800\",\"n\",\"8\",\"1\"\r\n\"COM2\"\r\n");
  EXPECT_TRUE(textos() == texto_en_otra_aplicacion && lejos.comandos.empty() && en_reposo());
}

}  // namespace
