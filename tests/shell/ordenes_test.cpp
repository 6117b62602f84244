#include <algorithm>

#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

const std::string texto_borrado = "¡Ha terminado de borrar!";

/// A file of eight bytes is loaded, which programming puts on the line as the frames 17 to 20.
struct ordenes : banco_principal {
  void SetUp() override {
    empezar();
    abrir_archivo("ocho.s19", ocho_bytes);
    plat.cajas.clear();
  }
  void pulsar(int indice) { f.barra.ButtonClick(indice); }
  /// Programs, and runs `accion` once, in the first pass after the board has taken `n` commands.
  void programar_y(std::size_t n, std::function<void()> accion) {
    plat.en_cada_pasada = [this, n, accion = std::move(accion), hecha = false]() mutable {
      if (hecha || lejos.comandos.size() < n) return;
      hecha = true;
      accion();
    };
    pulsar(3);
  }
  bool programada() { return lejos.chip.flash()[0x100] == 1 && lejos.chip.flash()[0x107] == 8; }
};

TEST_F(ordenes, the_erase_from_click_to_chip_and_a_failed_one_does_not_boast) {
  std::ranges::fill(lejos.chip.flash(), std::uint8_t{0});
  lejos.chip.sondeos_de_borrado = 2;
  f.progreso.Progress.Value = 7;
  pulsar(2);
  EXPECT_EQ(lejos.flujo(), "A a c d2E c a c i c c c D");
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención", texto_borrado}}));
  EXPECT_EQ(std::ranges::count(lejos.chip.flash(), 0xFF), total_flash);
  EXPECT_TRUE(en_reposo() && f.barra.boton(2).Enabled && f.progreso.Progress.Value == 0);
  lejos.chip.falla_config = true;
  f.progreso.Progress.Value = 7;
  f.menu.men_borrar_t.Click();
  EXPECT_EQ(lejos.flujo(12), "A a c d2E c D");
  EXPECT_EQ(textos(), texto_borrado + "|" + texto_sin_config);
  EXPECT_EQ(f.progreso.Progress.Value, 7);
}

TEST_F(ordenes, a_file_goes_into_the_chip_and_nothing_is_erased_for_nothing) {
  pulsar(3);
  EXPECT_EQ(textos(), texto_grabado);
  EXPECT_EQ(lejos.comandos.back(), "D");
  EXPECT_TRUE(programada() && v.dir_max_grabada == 0x107 && en_reposo() && f.progreso.Progress.Value == 0);
  v.dir_max = 0;
  plat.cajas.clear();
  lejos.comandos.clear();
  pulsar(3);
  f.menu.men_prog_t.Click();
  EXPECT_EQ(plat.cajas, (std::vector<caja>(2, {"Atención", "Debe cargar un programa antes de grabar"})));
  EXPECT_TRUE(lejos.comandos.empty() && f.barra.boton(3).Enabled);
}

TEST_F(ordenes, a_second_command_is_refused_and_wipes_a_pending_stop) {
  programar_y(16, [this] {
    pulsar(6);
    EXPECT_TRUE(f.progreso.cancelar);
    pulsar(2);
    EXPECT_FALSE(f.progreso.cancelar);
    EXPECT_TRUE(f.barra.boton(2).Enabled && !f.barra.boton(3).Enabled) << "the pressed button waits for its command";
  });
  EXPECT_EQ(textos(), texto_ocupado + "|" + texto_grabado);
  EXPECT_TRUE(programada());
}

TEST_F(ordenes, button_six_stops_between_groups) {
  programar_y(18, [this] { pulsar(6); });
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"", texto_detenido}}));
  EXPECT_TRUE(lejos.chip.flash()[0x103] == 4 && lejos.chip.flash()[0x104] == 0xFF && !f.progreso.cancelar);
  pulsar(6);
  EXPECT_TRUE(f.progreso.cancelar) << "while idle it waits for the next command that clears it";
}

TEST_F(ordenes, opening_is_refused_during_a_command_and_a_command_during_a_load) {
  programar_y(3, [this] {
    pulsar(1);
    f.menu.men_abrir.Click();
    f.menu.men_dir[0].Click();
  });
  EXPECT_EQ(textos(), texto_en_curso + "|" + texto_en_curso + "|" + texto_en_curso + "|" + texto_grabado);
  EXPECT_TRUE(programada());
  lejos.comandos.clear();
  plat.cajas.clear();
  plat.en_cada_pasada = [this] {
    plat.en_cada_pasada = nullptr;
    pulsar(2);
  };
  f.menu.men_dir[0].Click();
  EXPECT_EQ(textos(), "Se está cargando un archivo. Espere a que termine la carga|" + texto_cargado);
  EXPECT_TRUE(lejos.comandos.empty());
}

TEST_F(ordenes, a_device_that_vanishes_needs_no_question) {
  lejos.placa.fallos.cuelga_en = lejos.placa.tramas() + 17;
  pulsar(3);
  EXPECT_EQ(plat.cajas, std::vector{critica("Atención", texto_interrumpida)});
  EXPECT_TRUE(en_reposo());
}

TEST_F(ordenes, a_failed_closing_does_not_take_back_what_was_said) {
  lejos.placa.fallos.cuelga_en = lejos.placa.tramas() + 22;
  pulsar(3);
  EXPECT_EQ(textos(), texto_grabado);
  EXPECT_TRUE(en_reposo());
}

/// Erase and programming, broken off at each of their frames by silence, a lost or cut reply, RESET signals, refusals,
/// and a status that says nothing. What is announced as done is done.
TEST_F(ordenes, every_way_out_of_a_broken_command_leads_to_an_idle_window) {
  for (const int boton : {2, 3}) {
    for (std::uint64_t n = 1; n <= (boton == 2 ? 12u : 21u); ++n) {
      for (const int falta : {0, 1, 2, 3, 4, 5}) {
        for (const respuesta_caja respuesta : {vbCancel, vbYes}) {
          SCOPED_TRACE(testing::Message()
                       << "button " << boton << " frame " << n << " fault " << falta << " answer " << respuesta);
          lejos.placa.fallos = {};
          lejos.placa.vaciar();
          plat.cajas.clear();
          plat.olvidar_respuestas();
          const std::uint64_t trama = lejos.placa.tramas() + n;
          if (falta == 0) lejos.placa.fallos.muda_desde = trama;
          if (falta == 1) lejos.placa.fallos.calla_en = trama;
          if (falta == 2) lejos.placa.fallos.reset_en = trama, lejos.placa.fallos.reset_repetido = 3;
          if (falta == 3) lejos.placa.fallos.reset_en = trama;
          if (falta == 4) lejos.placa.fallos.error_en = trama;
          if (falta == 5) lejos.placa.fallos.cortada_en = trama, lejos.placa.fallos.cortada_tras = 3;
          std::ranges::fill(lejos.chip.flash(), std::uint8_t{0});
          plat.responder(respuesta);
          if (respuesta == vbYes && falta == 0) plat.responder(vbCancel);
          pulsar(boton);
          EXPECT_TRUE(en_reposo() && f.barra.boton(boton).Enabled);
          EXPECT_LE(plat.cajas.size(), 5u);
          const std::size_t aviso = textos().find(texto_interrumpida);
          EXPECT_EQ(aviso != std::string::npos, f.link.corte.interrumpida);
          EXPECT_TRUE(!f.link.corte.interrumpida || textos().substr(aviso) == texto_interrumpida) << "one, at the end";
          const bool borrada = textos().find(texto_borrado) != std::string::npos;
          const bool rechazada = falta == 4 && n == 8;
          EXPECT_TRUE(!borrada || rechazada || lejos.chip.flash()[0x20000] == 0xFF) << "a false word";
        }
      }
    }
  }
}

TEST_F(ordenes, a_board_that_is_always_late_needs_one_yes_for_each_guarded_command) {
  lejos.placa.fallos.retrasa_todas = true;
  for (const unsigned retraso : {1200u, 4900u}) {
    lejos.placa.fallos.retraso_ms = retraso;
    plat.cajas.clear();
    plat.tiempo_de_caja = std::chrono::milliseconds(retraso);
    for (int i = 0; i < 2; ++i) plat.responder(vbYes);
    pulsar(2);
    EXPECT_EQ(textos(), texto_pregunta + "|" + texto_borrado + "|" + texto_pregunta) << retraso;
    EXPECT_EQ(plat.olvidar_respuestas(), 0u);
  }
}

/// The replies to what was given up, and to an opening that was repeated, come while the next command reads.
TEST_F(ordenes, late_replies_are_not_read_as_data) {
  std::ranges::fill(lejos.chip.flash(), std::uint8_t{0x55});
  f.rango.txt_desde.Text = "0";
  f.rango.txt_hasta.Text = "400";
  for (const bool repetida : {false, true}) {
    plat.cajas.clear();
    lejos.placa.fallos = {};
    lejos.placa.fallos.retrasada_en = lejos.placa.tramas() + (repetida ? 1 : 5);
    lejos.placa.fallos.retraso_ms = repetida ? 2'500 : 7'060;
    plat.tiempo_de_caja = 1s;
    plat.responder(repetida ? vbYes : vbCancel);
    f.rango.btn_leer.Click();
    if (!repetida) f.rango.btn_leer.Click();
    EXPECT_TRUE(textos().ends_with("¡Ha terminado de Leer!"));
    EXPECT_EQ(std::ranges::count(v.buffer_entrada, 0x55), 0x420);
  }
}

TEST_F(ordenes, closing_during_a_command_closes_the_chip_first) {
  EXPECT_TRUE(pedir_cierre(f)) << "an idle window goes at once";
  for (const std::size_t n : {1u, 6u, 10u, 16u, 18u}) {
    f.link.peticiones_cierre = 0;
    lejos.comandos.clear();
    programar_y(n, [this] { EXPECT_FALSE(pedir_cierre(f) || debe_cerrarse(f)); });
    EXPECT_TRUE(debe_cerrarse(f) && en_reposo() && plat.cajas.empty());
    EXPECT_EQ(lejos.comandos.back(), "D") << n;
    EXPECT_LE(lejos.comandos.size(), n + 2) << "at most the rest of a group and the D";
  }
}

TEST_F(ordenes, a_second_request_to_close_does_not_wait_for_a_silent_board) {
  lejos.placa.fallos.muda_desde = lejos.placa.tramas() + 8;
  const auto antes = plat.ahora();
  programar_y(8, [this] {
    pedir_cierre(f);
    plat.programar(plat.ahora() + 200ms, [this] { pedir_cierre(f); });
  });
  EXPECT_LT(plat.ahora() - antes, 1s);
  EXPECT_TRUE(debe_cerrarse(f) && plat.cajas.empty() && en_reposo());
}

TEST_F(ordenes, leaving_by_the_menu_needs_no_question) {
  EXPECT_THROW(programar_y(3, [this] { f.menu.men_salir.Click(); }), fin_de_programa);
}

TEST_F(ordenes, a_command_that_ends_by_an_exception_leaves_an_idle_window) {
  for (const std::size_t n : {1u, 5u}) {
    plat.pasar(1s);
    lejos.entregar(100, plat.ahora());
    lejos.comandos.clear();
    plat.en_cada_pasada = [this, n] {
      if (lejos.comandos.size() >= n) throw std::runtime_error("roto");
    };
    EXPECT_THROW(pulsar(2), std::runtime_error);
    EXPECT_TRUE(en_reposo() && f.link.vigiladas == 0 && f.barra.boton(2).Enabled);
  }
}

}  // namespace
