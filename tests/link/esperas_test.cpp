#include "apoyo/banco.h"
#include "apoyo/guion.h"

using namespace apoyo;

namespace {

using espera = void (*)(enlace&);

struct esperas : banco_enlace<guion> {
  void SetUp() override { reabrir(); }
  /// How long the wait for the reply to `comando` took.
  instante enviar_y(espera como, const char* comando = "c") {
    enviar_comando(e, comando);
    const instante inicio = plat.ahora();
    como(e);
    return plat.ahora() - inicio;
  }
};

constexpr espera sin_vigilancia[] = {esperar_respuesta, esperar_datos, esperar_datos_rapido};
const caja pregunta_esperada{"Atención error de comunicación", texto_pregunta, botones::SiNoCancelar, icono::critico};
constexpr espera todas[] = {esperar_respuesta, esperar_datos, esperar_datos_rapido, esperar_con_vigilancia};

TEST_F(esperas, a_reply_is_complete_when_the_wait_returns_and_a_prompt_one_needs_one_pass) {
  for (const espera como : todas) {
    lejos.contestar(marco("002"), 0ms);
    const auto antes = plat.pasadas;
    enviar_y(como);
    EXPECT_EQ(plat.pasadas, antes + 1);
    EXPECT_TRUE(e.respuesta_lista && !e.spera_resp.Enabled());
  }
  for (const espera como : sin_vigilancia) {
    lejos.contestar("?" + marco("022"), 3s, 400ms);
    e.bit_wen = 0;
    enviar_y(como);
    EXPECT_EQ(e.bit_wen, 1);
  }
  EXPECT_EQ(textos(), "");
}

TEST_F(esperas, each_kind_of_silence_asks_in_its_time_and_cancel_or_closing_breaks_off) {
  const struct {
    const char* comando;
    std::string llega;
    instante tras, por_caracter, pregunta;
  } casos[] = {{"c", "", 0s, 0s, 5s},
               {"C000000007FFF", "", 0s, 0s, 10s},
               {"c", "\00202", 1s, 500ms, 7s},
               {"c", std::string(30, 'x'), 0s, 1s, 15s},
               {"c", std::string(100'000, 'x'), 0s, 0s, 0s}};
  for (const espera como : sin_vigilancia) {
    for (const auto& c : casos) {
      lejos.contestar(c.llega, c.tras, c.por_caracter);
      const respuesta_caja respuesta = como == esperar_datos ? vbNinguna : vbCancel;
      plat.responder(respuesta);
      EXPECT_EQ(enviar_y(como, c.comando), c.pregunta);
      EXPECT_EQ(plat.cajas, std::vector{pregunta_esperada});
      EXPECT_TRUE(e.corte.interrumpida && !e.tiempo_agotado && !e.respuesta_lista);
      EXPECT_EQ(e.resultado_msgbox, std::to_string(respuesta));
      lejos.callar();
      reabrir();
    }
  }
}

TEST_F(esperas, a_long_block_in_its_fixed_mode_may_take_nine_seconds_and_a_short_frame_speaks) {
  const modo_fijo modo(serial, 47, 47);
  lejos.contestar(std::string(47, 'F'), 9s);
  enviar_y(esperar_datos, "C000000007FFF");
  EXPECT_TRUE(e.datos_listos && plat.cajas.empty());
  lejos.contestar(marco("7"));
  enviar_y(esperar_datos, "C000000007FFF");
  EXPECT_EQ(textos(), "Ez Port no está activado");
  EXPECT_TRUE(e.corte.interrumpida);
}

TEST_F(esperas, in_a_broken_operation_waits_return_at_once_and_nothing_goes_out_but_an_allowed_d) {
  for (const bool permitido : {false, true}) {
    interrumpir(e);
    e.corte.cierre_permitido = permitido;
    const auto antes = plat.pasadas;
    for (const espera como : todas) enviar_y(como, "a");
    EXPECT_EQ(plat.pasadas, antes);
    enviar_comando(e, "D");
    EXPECT_EQ(lejos.comandos, std::vector<std::string>(permitido ? 1 : 0, "D"));
    reabrir();
    EXPECT_FALSE(e.corte.interrumpida);
  }
}

TEST_F(esperas, no_ends_the_program_and_yes_goes_on_with_a_reply_that_has_come_meanwhile) {
  for (const espera como : todas) {
    plat.responder(vbNo);
    EXPECT_THROW(enviar_y(como), fin_de_programa);
    reabrir();
  }
  plat.responder(vbYes, [this] { lejos.poner(marco("002"), plat.ahora()); });
  enviar_y(esperar_datos);
  EXPECT_TRUE(e.datos_listos && e.bit_wen == 1 && !e.corte.interrumpida && lejos.comandos.back() == "c");
}

TEST_F(esperas, yes_without_a_reply_opens_the_chip_anew_and_breaks_off) {
  for (const bool responde : {true, false}) {
    lejos.contestar("\0020");
    if (responde) lejos.contestar(trama("030"));
    plat.responder(vbYes);
    if (!responde) plat.responder(vbCancel);
    const modo_fijo modo(serial, 0, 5);
    enviar_y(esperar_datos_rapido, "a");
    EXPECT_EQ(lejos.comandos.back(), "A");
    EXPECT_TRUE(modo_de_siempre() && e.corte.interrumpida);
    EXPECT_EQ(e.corte.cierre_permitido, responde) << "only an answered A makes a D worth sending";
    reabrir();
  }
}

TEST_F(esperas, a_vanished_device_and_a_second_request_to_close_end_every_wait_without_a_question) {
  for (const espera como : todas) {
    for (const bool desaparece : {true, false}) {
      e.peticiones_cierre = 1;
      plat.programar(plat.ahora() + 300ms, [&] {
        lejos.cuelga = desaparece;
        if (!desaparece) ++e.peticiones_cierre;
      });
      EXPECT_EQ(enviar_y(como), 300ms);
      EXPECT_EQ(e.tiempo_agotado, !desaparece);
      EXPECT_EQ(e.corte.interrumpida, desaparece || como != esperar_con_vigilancia);
      EXPECT_EQ(textos(), "");
      lejos.cuelga = e.tiempo_agotado = false;
      reabrir();
    }
  }
}

TEST_F(esperas, the_watchdog_asks_each_second_and_yes_sends_a_whatever_the_wait_was_for) {
  plat.responder(vbYes);
  plat.responder(vbYes);
  plat.responder(vbNinguna);
  plat.tiempo_de_caja = 7s;
  EXPECT_EQ(enviar_y(esperar_con_vigilancia, "D"), 3 * 8s)
      << "a second before each question, and the time of its answer";
  EXPECT_EQ(lejos.comandos, (std::vector<std::string>{"D", "A", "A"}));
  EXPECT_EQ(plat.cajas, std::vector(3, pregunta_esperada));
  EXPECT_TRUE(e.tiempo_agotado && !e.respuesta_lista && !e.spera_resp.Enabled());
  EXPECT_FALSE(e.corte.interrumpida) << "a guarded wait that was given up is no broken operation";
  for (const espera como : sin_vigilancia) {
    const auto antes = plat.pasadas;
    enviar_y(como);
    EXPECT_TRUE(plat.pasadas - antes <= 2 && e.tiempo_agotado) << "later waits run through";
  }
}

TEST_F(esperas, held_back_characters_quiet_the_watchdog_but_not_for_ever) {
  lejos.contestar("\0020", 900ms);
  plat.responder(vbCancel);
  EXPECT_EQ(enviar_y(esperar_con_vigilancia, "A"), 900ms + 5s);
  EXPECT_TRUE(e.corte.interrumpida);
}

TEST_F(esperas, a_late_reply_is_not_taken_for_the_next_one) {
  lejos.contestar(trama("030"), 1500ms);
  lejos.contestar(trama("030"), 1500ms);
  lejos.contestar(marco("002"), 1200ms);
  plat.responder(vbYes);
  enviar_y(esperar_con_vigilancia, "A");
  EXPECT_TRUE(e.respuesta_lista && !e.tiempo_agotado);
  enviar_y(esperar_datos, "c");
  EXPECT_EQ(e.registro_estado, 0x02);
}

TEST_F(esperas, the_watchdog_that_a_reset_armed_breaks_off_on_cancel) {
  lejos.contestar(marco("1RESET"));
  plat.responder(vbCancel);
  EXPECT_EQ(enviar_y(esperar_datos), 1ms + 1s);
  EXPECT_TRUE(e.tiempo_agotado && e.corte.interrumpida);
  serial.PortOpen(false);
  spera_resp_Timer(e);
  EXPECT_EQ(plat.cajas.size(), 2u) << "nothing is asked about a closed port";
}

}  // namespace
