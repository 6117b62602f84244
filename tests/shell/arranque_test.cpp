#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

using arranque = banco_principal;

TEST_F(arranque, the_window_comes_up_whatever_is_missing) {
  const struct {
    std::string ajustes;
    bool hay_puerto, muda;
    std::string cajas, flujo;
  } casos[] = {{"-", true, false, texto_no_es_puerto, ""},
               {"", true, false, "", "A D"},
               {ajustes_buenos, false, false, texto_no_hay_puerto, ""},
               {ajustes_buenos, true, true, texto_pregunta, "A"}};
  plat.usuario = [](const caja&) { return vbCancel; };
  for (const auto& c : casos) {
    std::filesystem::remove(dir.ruta() / "SETTINGS.TXT");
    if (c.ajustes != "-") dir.escribir("SETTINGS.TXT", c.ajustes);
    linea.hay_puerto = c.hay_puerto;
    lejos.placa.averiar({.muda_desde = c.muda ? 1U : 0U});
    lejos.comandos.clear();
    plat.cajas.clear();
    Form_Load(f);
    EXPECT_EQ(textos(), c.cajas);
    EXPECT_EQ(lejos.flujo(), c.flujo);
    EXPECT_TRUE(en_reposo());
  }
  EXPECT_FALSE(f.menu.men_proteger_f.Visible || f.menu.men_seleccion.Enabled);
  EXPECT_EQ(v.buffer_salida[0x40001], 0xFF);
  EXPECT_EQ(std::filesystem::current_path(), dir.ruta());
}

TEST_F(arranque, settings_typed_reach_nothing_chosen_are_in_force_and_only_what_opens_is_saved) {
  empezar();
  frm_cfg_pto_serial& d = f.cfg_pto_serial;
  const auto elegir = [](ComboBox& combo, const char* entrada) { combo.Text = entrada, combo.Click(); };
  f.menu.men_pto_s.Click();
  EXPECT_EQ(d.cmb_s_velocity.Text.valor() + d.cmb_s_puerto.Text.valor(), "57600COM1");
  d.cmb_s_velocity.Text = "300";
  d.btn_guardar.Click();
  EXPECT_EQ(dir.leer("SETTINGS.TXT"), ajustes_buenos);
  elegir(d.cmb_s_velocity, "115200");
  d.btn_salir.Click();
  f.menu.men_borrar_t.Click();
  EXPECT_EQ(linea.linea().velocidad, 115200);
  EXPECT_EQ(dir.leer("SETTINGS.TXT"), ajustes_buenos);
  f.menu.men_pto_s.Click();
  EXPECT_EQ(f.link.valores.velocidad, "57600") << "the file is read again";
  elegir(d.cmb_s_velocity, "28800");
  elegir(d.cmb_s_puerto, "COM2");
  for (const bool ocupado : {true, false}) {
    EXPECT_EQ(dir.leer("SETTINGS.TXT"), ajustes_buenos);
    linea.ocupado = ocupado;
    d.btn_guardar.Click();
  }
  EXPECT_EQ(dir.leer("SETTINGS.TXT"), "\"28800\",\"n\",\"8\",\"1\"\r\n\"COM2\"\r\n");
  EXPECT_EQ(ultima().texto, texto_en_otra_aplicacion);
  EXPECT_TRUE(en_reposo());
}

TEST_F(arranque, the_port_dialog_tells_what_holds_and_makes_the_file_that_is_missing) {
  frm_cfg_pto_serial& d = f.cfg_pto_serial;
  const auto dice = [&d] { return d.describir().texto + (d.describir().aviso ? "!" : ""); };
  empezar();
  f.menu.men_pto_s.Click();
  EXPECT_EQ(dice(), "En vigor: COM1 a 57600 baudios, guardado");
  d.cmb_s_puerto.Text = "COM2";
  EXPECT_EQ(dice(), "Lo escrito no cuenta: elija en la lista. En vigor: COM1 a 57600 baudios!");
  d.cmb_s_puerto.Click();
  EXPECT_EQ(dice(), "En vigor: COM2 a 57600 baudios, sin guardar");
  d.btn_guardar.Click();
  EXPECT_EQ(dice(), "En vigor: COM2 a 57600 baudios, guardado");
  std::filesystem::remove(dir.ruta() / "SETTINGS.TXT");
  static_cast<campos_ajustes&>(f.link.valores) = {};
  d.ventana.Unload();
  f.menu.men_pto_s.Click();
  EXPECT_EQ(dice(), "No hay puerto elegido. No hay SETTINGS.TXT: no se guardará (Más > Crear SETTINGS.TXT)!");
  d.cmb_s_puerto.Text = "COM3";
  d.cmb_s_puerto.Click();
  d.crear_fichero();
  EXPECT_EQ(dir.leer("SETTINGS.TXT"), "\"57600\",\"n\",\"8\",\"1\"\r\n\"COM3\"\r\n");
  EXPECT_EQ(dice(), "En vigor: COM3 a 57600 baudios, guardado");
  dir.escribir("SETTINGS.TXT", ajustes_buenos);
  d.crear_fichero();
  EXPECT_EQ(dir.leer("SETTINGS.TXT"), ajustes_buenos) << "one that has come meanwhile stays";
  EXPECT_EQ(dice(), "En vigor: COM1 a 57600 baudios, guardado");
}

}  // namespace
