#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

struct cfg_pto_serial : banco_principal {
  void SetUp() override {
    empezar();
    f.menu.men_pto_s.Click();
  }
  void elegir(ComboBox& combo, const std::string& entrada) {
    combo.Text = entrada;
    combo.Click();
  }
  frm_cfg_pto_serial& d = f.cfg_pto_serial;
};

TEST_F(cfg_pto_serial, shows_the_file_and_what_is_typed_reaches_nothing) {
  EXPECT_TRUE(d.ventana.Visible && d.cmb_s_velocity.Text.valor() == "57600" && d.cmb_s_puerto.Text.valor() == "COM1");
  d.cmb_s_velocity.Text = "300";
  f.menu.men_pto_s.Click();
  EXPECT_EQ(d.cmb_s_velocity.Text.valor(), "300") << "an open window only comes to the front";
  d.btn_guardar.Click();
  EXPECT_EQ(dir.leer("SETTINGS.TXT"), ajustes_buenos);
  EXPECT_TRUE(d.ventana.Visible && f.link.valores.velocidad == "57600");
}

TEST_F(cfg_pto_serial, a_choice_is_in_force_at_once_and_forgotten_when_the_file_is_read_again) {
  elegir(d.cmb_s_velocity, "115200");
  d.btn_salir.Click();
  EXPECT_FALSE(d.ventana.Visible);
  f.menu.men_borrar_t.Click();
  EXPECT_EQ(linea.linea().velocidad, 115200);
  EXPECT_EQ(dir.leer("SETTINGS.TXT"), ajustes_buenos);
  f.menu.men_pto_s.Click();
  EXPECT_TRUE(d.cmb_s_velocity.Text.valor() == "57600" && f.link.valores.velocidad == "57600");
}

TEST_F(cfg_pto_serial, only_what_opens_is_saved) {
  elegir(d.cmb_s_velocity, "28800");
  elegir(d.cmb_s_puerto, "COM2");
  linea.ocupado = true;
  d.btn_guardar.Click();
  EXPECT_EQ(textos(), texto_en_otra_aplicacion);
  EXPECT_EQ(dir.leer("SETTINGS.TXT"), ajustes_buenos);
  linea.ocupado = false;
  d.btn_guardar.Click();
  EXPECT_EQ(dir.leer("SETTINGS.TXT"), "\"28800\",\"n\",\"8\",\"1\"\r\n\"COM2\"\r\n");
  EXPECT_TRUE(plat.cajas.size() == 1 && lejos.comandos.empty() && en_reposo()) << "nothing is sent";
}

}  // namespace
