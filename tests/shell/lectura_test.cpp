// Reading back, through the menu and through the panel of ranges.

#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

const std::string leido = "¡Ha terminado de Leer!";

struct lectura : banco_principal {
  void SetUp() override {
    empezar();
    for (std::size_t i = 0; i < lejos.chip.flash().size(); ++i) lejos.chip.flash()[i] = valor(i);
  }
  static std::uint8_t valor(std::size_t dir) { return static_cast<std::uint8_t>(dir * 7 + dir / 256 + 1); }
  /// The addresses of the readings, the rest of the commands as they are.
  std::string flujo() const {
    std::string texto;
    for (const std::string& c : lejos.comandos) texto += (c.front() == 'e' ? c.substr(1, 6) : c) + " ";
    return texto;
  }
  void leer_rango(const std::string& desde, const std::string& hasta) {
    lejos.comandos.clear();
    plat.cajas.clear();
    f.rango.fra_rango.Visible = true;
    f.rango.txt_desde.Text = desde;
    f.rango.txt_hasta.Text = hasta;
    f.rango.btn_leer.Click();
    EXPECT_TRUE(en_reposo());
  }
  /// True if just these cells were read, and the others are 0.
  bool leidas(std::size_t desde, std::size_t hasta) const {
    for (std::size_t i = 0; i < v.buffer_entrada.size(); ++i) {
      const std::uint8_t flash = i < 0x40000 ? valor(i) : 0xFF;
      if (v.buffer_entrada[i] != (i >= desde && i <= hasta ? flash : 0)) return false;
    }
    return true;
  }
};

TEST_F(lectura, ranges_are_corrected_as_the_boxes_then_show) {
  const struct {
    const char *desde, *hasta, *desde_queda, *hasta_queda;
    const char* primera;
    std::size_t lecturas;
    std::int32_t fin;
  } casos[] = {
      {"20", "40", "20", "40", "000020", 2, 0x40},
      {"40", "20", "40", "20", "000040", 1, 0x20},
      {"1200", "1234", "1200", "1234", "001200", 4, 0x1234},
      {"5", "20", "000000", "20", "000000", 2, 0x20},
      {"25", "40", "25", "40", "000020", 2, 0x40},
      {"ZZ", "1G", "ZZ", "1G", "000000", 2, 1},
      {"3ffe0", "3FFF8", "3ffe0", "03FFFF", "03FFE0", 2, 0x3FFFF},
      {"3FFE0", "40000", "3FFE0", "03FFFF", "03FFE0", 2, 0x3FFFF},
      {" 20", "30", " 20", "30", "000000", 3, 0x30},
      {"0", "0", "0", "0", "000000", 1, 0},
      {"50000", "20", "50000", "20", "050000", 1, 0x20},
      {"FFFFFFF0", "20", "FFFFFFF0", "20", "", 0, 0x20},
  };
  for (const auto& c : casos) {
    SCOPED_TRACE(std::string(c.desde) + " " + c.hasta);
    leer_rango(c.desde, c.hasta);
    EXPECT_EQ(f.rango.txt_desde.Text.valor(), c.desde_queda);
    EXPECT_EQ(f.rango.txt_hasta.Text.valor(), c.hasta_queda);
    EXPECT_EQ(lejos.comandos.size(), c.lecturas + 1) << "an A and no D";
    EXPECT_EQ(c.lecturas > 0 ? lejos.comandos.at(1) : "e20", std::string("e") + c.primera + "20");
    EXPECT_EQ(v.dir_fin_lectura, c.fin);
    EXPECT_EQ(textos(), leido);
    EXPECT_FALSE(f.rango.fra_rango.Visible);
  }
}

TEST_F(lectura, what_was_asked_for_is_stored_and_nothing_else) {
  leer_rango("20", "40");
  EXPECT_TRUE(leidas(0x20, 0x5F));
  leer_rango("3FFF0", "3FFFF");
  EXPECT_TRUE(leidas(0x3FFF0, 0x40001));
}

TEST_F(lectura, an_empty_box_starts_nothing) {
  for (const auto& [desde, hasta] : {std::pair{"20", "  "}, {"", "20"}}) {
    leer_rango(desde, hasta);
    EXPECT_TRUE(lejos.comandos.empty() && plat.cajas.empty() && f.rango.fra_rango.Visible);
  }
}

TEST_F(lectura, what_was_programmed_is_read_or_a_range_is_offered) {
  f.menu.men_leer_ft.Click();
  EXPECT_EQ(flujo(), "A ");
  EXPECT_TRUE(f.rango.fra_rango.Visible && plat.cajas.empty() && en_reposo());
  f.rango.btn_salir.Click();
  EXPECT_FALSE(f.rango.fra_rango.Visible);
  f.menu.men_leer_fr.Click();
  EXPECT_TRUE(f.rango.fra_rango.Visible);

  lejos.comandos.clear();
  v.dir_max_grabada = 0x21;
  f.menu.men_leer_ft.Click();
  EXPECT_EQ(flujo(), "A 000000 000020 000040 D ");
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"", leido}}));
  EXPECT_TRUE(leidas(0, 0x5F) && v.dir_fin_lectura == 0x21);
}

TEST_F(lectura, a_stop_stores_the_block_under_way) {
  v.dir_max_grabada = 0x1000;
  plat.en_cada_pasada = [this] { f.progreso.cancelar = lejos.comandos.size() >= 4; };
  f.menu.men_leer_ft.Click();
  EXPECT_EQ(flujo(), "A 000000 000020 000040 D ");
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención", "El proceso de Upload ha sido detenido por el usuario"}}));
  EXPECT_TRUE(leidas(0, 0x5F) && f.progreso.Progress.Value == 0);
}

TEST_F(lectura, the_reply_to_a_reset_is_no_block) {
  v.dir_max_grabada = 0x60;
  for (std::uint64_t n = 2; n <= 5; ++n) {
    lejos.placa.fallos.reset_en = lejos.placa.tramas() + n;
    plat.cajas.clear();
    f.menu.men_leer_ft.Click();
    EXPECT_EQ(textos(), "Se ha recibido una señal de RESET|" + texto_interrumpida);
    EXPECT_TRUE(linea.escrito().ends_with(marco("D")));
    EXPECT_TRUE(en_reposo() && v.buffer_entrada[(n - 2) * 32] == 0);
    plat.pasar(1s);
    lejos.entregar(100, plat.ahora());
  }
}

TEST_F(lectura, closing_during_the_opening_still_closes_the_chip) {
  v.dir_max_grabada = 0x60;
  plat.en_cada_pasada = [this] { f.link.peticiones_cierre = 1; };
  f.menu.men_leer_ft.Click();
  EXPECT_EQ(flujo(), "A D ");
}

TEST_F(lectura, a_broken_reading_does_not_claim_its_end) {
  v.dir_max_grabada = 0x60;
  for (std::uint64_t n = 2; n <= 5; ++n) {
    lejos.placa.fallos.suma_mala_en = lejos.placa.tramas() + n;
    plat.cajas.clear();
    f.menu.men_leer_ft.Click();
    EXPECT_EQ(textos(), texto_cheksum + "|" + texto_interrumpida);
  }
  lejos.placa.fallos = {};
  lejos.placa.fallos.error_en = lejos.placa.tramas() + 3;
  plat.cajas.clear();
  f.menu.men_leer_ft.Click();
  EXPECT_TRUE(textos().ends_with(leido)) << "a refused block is told and reads as 0";
  EXPECT_TRUE(v.buffer_entrada[0x1F] == valor(0x1F) && v.buffer_entrada[0x30] == 0);
}

}  // namespace
