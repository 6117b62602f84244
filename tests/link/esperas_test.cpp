#include "apoyo/banco_enlace.h"

using namespace morvane;
using namespace apoyo;

namespace {

using espera = void (*)(enlace&);

struct esperas : banco_enlace {
  void SetUp() override { abrir(); }
  void enviar_y(espera como, const char* comando = "c") {
    enviar_comando(e, comando);
    inicio = plat.ahora();
    como(e);
  }
  instante pasado() const { return plat.ahora() - inicio; }
  bool abierta_de_nuevo() const { return lejos.comandos.back() == "A"; }
  instante inicio{0};
};

constexpr espera sin_vigilancia[] = {esperar_respuesta, esperar_datos, esperar_datos_rapido};

TEST_F(esperas, a_reply_in_the_first_pass_needs_no_second) {
  for (const espera como : {esperar_respuesta, esperar_datos, esperar_datos_rapido, esperar_con_vigilancia}) {
    lejos.contestar(marco("002"), 0ms);
    const auto antes = plat.pasadas;
    enviar_y(como);
    EXPECT_EQ(plat.pasadas, antes + 1);
    EXPECT_TRUE(e.respuesta_lista && !e.spera_resp.Enabled() && plat.cajas.empty());
  }
}

TEST_F(esperas, late_and_trickling_replies_are_complete_when_the_wait_returns) {
  for (const espera como : sin_vigilancia) {
    lejos.contestar("?" + marco("022"), 3s, 400ms);
    e.bit_wen = 0;
    enviar_y(como);
    EXPECT_TRUE(e.bit_wen == 1 && plat.cajas.empty());
  }
}

TEST_F(esperas, silence_asks_after_five_seconds_and_cancel_breaks_off) {
  for (const espera como : sin_vigilancia) {
    plat.responder(vbCancel);
    enviar_y(como);
    EXPECT_EQ(pasado(), 5s);
    EXPECT_TRUE(e.corte.interrumpida && !e.tiempo_agotado && !e.datos_listos);
    EXPECT_EQ(ultima(),
              (caja{"Atención error de comunicación", texto_pregunta, botones::SiNoCancelar, icono::critico}));
    EXPECT_EQ(e.resultado_msgbox, "2");
    const auto antes = plat.pasadas;
    enviar_comando(e, "D");
    como(e);
    EXPECT_EQ(plat.pasadas, antes) << "waits return at once";
    EXPECT_EQ(lejos.comandos.back(), "c") << "nothing goes out any more";
    cerrar_puerto(e);
    abrir();
    EXPECT_FALSE(e.corte.interrumpida);
  }
}

TEST_F(esperas, the_block_check_may_take_ten_seconds) {
  lejos.contestar(std::string(47, 'F'), 9s);
  const modo_fijo modo(serial, 47, 47);
  enviar_y(esperar_datos, "C000000007FFF");
  EXPECT_TRUE(e.datos_listos && plat.cajas.empty());
  plat.responder(vbCancel);
  enviar_y(esperar_datos, "C000000007FFF");
  EXPECT_EQ(pasado(), 10s);
}

TEST_F(esperas, a_cut_reply_is_silence_from_its_last_character_on) {
  lejos.contestar(
      "\x02"
      "02",
      1s, 500ms);
  plat.responder(vbCancel);
  enviar_y(esperar_datos);
  EXPECT_EQ(pasado(), 7s);
  EXPECT_TRUE(e.corte.interrumpida && !e.datos_listos);
}

TEST_F(esperas, characters_that_are_no_reply_end_after_fifteen_seconds_or_a_full_buffer) {
  for (const espera como : sin_vigilancia) {
    lejos.poner(std::string(30, 'x'), plat.ahora(), 1s);
    plat.responder(vbCancel);
    enviar_y(como);
    EXPECT_EQ(pasado(), 15s);
    cerrar_puerto(e);
    plat.pasar(30s);
    lejos.entregar(1000, plat.ahora());

    abrir();
    lejos.balbuceo = 'x';
    plat.responder(vbCancel);
    enviar_y(como);
    EXPECT_LT(pasado(), 1s);
    EXPECT_TRUE(e.corte.interrumpida && !e.respuesta_lista) << "noise that fills the buffer is no reply";
    lejos.balbuceo = 0;
    cerrar_puerto(e);
    abrir();
  }
}

TEST_F(esperas, yes_goes_on_with_a_reply_that_has_come_meanwhile) {
  plat.responder(vbYes, [this] { lejos.poner(marco("002"), plat.ahora()); });
  enviar_y(esperar_datos);
  EXPECT_TRUE(e.datos_listos && e.bit_wen == 1 && !e.corte.interrumpida);
  EXPECT_EQ(lejos.comandos, std::vector<std::string>{"c"});
}

TEST_F(esperas, yes_without_a_reply_opens_the_chip_anew_and_breaks_off) {
  for (const bool responde : {true, false}) {
    lejos.contestar(
        "\x02"
        "0");
    if (responde) lejos.contestar(hecho);
    plat.responder(vbYes);
    if (!responde) plat.responder(vbCancel);
    {
      const modo_fijo modo(serial, 0, 5);
      enviar_y(esperar_datos_rapido, "a");
      EXPECT_TRUE(abierta_de_nuevo() && serial.RThreshold() == 1);
    }
    EXPECT_EQ(e.corte.cierre_permitido, responde);
    EXPECT_TRUE(e.corte.interrumpida);
    enviar_comando(e, "a");
    enviar_comando(e, "D");
    EXPECT_EQ(lejos.comandos.back(), responde ? "D" : "A") << "only an answered A makes a D worth sending";
    cerrar_puerto(e);
    abrir();
  }
}

TEST_F(esperas, no_ends_the_program) {
  plat.responder(vbNo);
  EXPECT_THROW(enviar_y(esperar_datos), fin_de_programa);
  plat.responder(vbNo);
  EXPECT_THROW(enviar_y(esperar_con_vigilancia, "A"), fin_de_programa);
}

TEST_F(esperas, a_short_frame_in_a_fixed_mode_speaks_instead_of_the_question) {
  lejos.contestar(marco("7"));
  const modo_fijo modo(serial, 47, 47);
  enviar_y(esperar_datos, "C000000007FFF");
  ASSERT_EQ(plat.cajas.size(), 1u);
  EXPECT_EQ(ultima().texto, "Ez Port no está activado");
  EXPECT_TRUE(e.corte.interrumpida);
}

TEST_F(esperas, a_vanished_device_breaks_off_at_once_without_a_question) {
  for (const espera como : {esperar_respuesta, esperar_datos, esperar_datos_rapido, esperar_con_vigilancia}) {
    plat.programar(plat.ahora() + 300ms, [this] { lejos.cuelga = true; });
    enviar_y(como);
    EXPECT_EQ(pasado(), 300ms);
    EXPECT_TRUE(e.corte.interrumpida && plat.cajas.empty());
    cerrar_puerto(e);
    lejos.cuelga = false;
    abrir();
  }
}

TEST_F(esperas, the_watchdog_asks_each_second_and_yes_sends_a_whatever_the_wait_was_for) {
  plat.responder(vbYes);
  plat.responder(vbYes);
  plat.responder(vbCancel);
  plat.tiempo_de_caja = 7s;
  enviar_y(esperar_con_vigilancia, "D");
  EXPECT_EQ(lejos.comandos, (std::vector<std::string>{"D", "A", "A"}));
  EXPECT_EQ(pasado(), 3 * 8s) << "a second of silence before each question, and the time of the answer";
  EXPECT_TRUE(e.tiempo_agotado && !e.respuesta_lista && !e.spera_resp.Enabled());
  EXPECT_FALSE(e.corte.interrumpida) << "a guarded wait that was given up is no broken operation";
  EXPECT_EQ(plat.cajas.size(), 3u);
}

TEST_F(esperas, a_closed_question_counts_as_cancel) {
  plat.responder(vbNinguna);
  enviar_y(esperar_con_vigilancia, "A");
  EXPECT_TRUE(e.tiempo_agotado);
}

TEST_F(esperas, held_back_characters_quiet_the_watchdog_but_not_for_ever) {
  lejos.contestar(
      "\x02"
      "0",
      900ms);
  plat.responder(vbCancel);
  enviar_y(esperar_con_vigilancia, "A");
  EXPECT_EQ(pasado(), 900ms + 5s);
  EXPECT_TRUE(e.corte.interrumpida);
}

TEST_F(esperas, a_late_reply_is_not_taken_for_the_next_one) {
  lejos.contestar(hecho, 1500ms);
  lejos.contestar(hecho, 1500ms);
  lejos.contestar(marco("002"));
  plat.responder(vbYes);
  enviar_y(esperar_con_vigilancia, "A");
  EXPECT_TRUE(e.respuesta_lista && !e.tiempo_agotado);
  enviar_y(esperar_datos, "c");
  EXPECT_EQ(e.registro_estado, 0x02);
}

TEST_F(esperas, a_cancel_of_the_past_lets_later_waits_run_through) {
  plat.responder(vbCancel);
  enviar_y(esperar_con_vigilancia, "A");
  for (const espera como : sin_vigilancia) {
    const auto antes = plat.pasadas;
    enviar_y(como);
    EXPECT_LE(plat.pasadas - antes, 2u);
    EXPECT_TRUE(e.tiempo_agotado);
  }
}

TEST_F(esperas, the_watchdog_that_a_reset_armed_breaks_off_on_cancel) {
  lejos.contestar(marco("1RESET"));
  plat.responder(vbCancel);
  enviar_y(esperar_datos);
  EXPECT_EQ(pasado(), 1ms + 1s);
  EXPECT_TRUE(e.tiempo_agotado && e.corte.interrumpida);
}

TEST_F(esperas, a_tick_after_the_port_was_closed_asks_nothing) {
  e.spera_resp.Enabled(true);
  serial.PortOpen(false);
  spera_resp_Timer(e);
  EXPECT_TRUE(plat.cajas.empty() && !e.spera_resp.Enabled());
}

TEST_F(esperas, a_second_request_to_close_ends_the_wait_as_cancel_does) {
  for (const espera como : {esperar_respuesta, esperar_datos, esperar_datos_rapido, esperar_con_vigilancia}) {
    e.peticiones_cierre = 1;
    plat.programar(plat.ahora() + 400ms, [this] { ++e.peticiones_cierre; });
    enviar_y(como);
    EXPECT_EQ(pasado(), 400ms);
    EXPECT_TRUE(e.tiempo_agotado && plat.cajas.empty());
    cerrar_puerto(e);
    e.peticiones_cierre = 0;
    e.tiempo_agotado = false;
    abrir();
  }
}

}  // namespace
