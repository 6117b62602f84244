#include "apoyo/banco.h"
#include "apoyo/guion.h"

using namespace apoyo;

namespace {

struct esperas : banco_enlace<guion> {
  void SetUp() override { reabrir(); }
  /// How long the wait for the reply to `comando` took.
  instante enviar_y(void (*como)(enlace&), const char* comando = "c") {
    enviar_comando(e, comando);
    const instante inicio = plat.ahora();
    como(e);
    return plat.ahora() - inicio;
  }
};

const caja pregunta{"Atención error de comunicación", texto_pregunta, botones::SiNoCancelar, icono::critico};

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
  for (const auto& c : casos) {
    for (const respuesta_caja r : {vbCancel, vbNinguna}) {
      lejos.contestar(c.llega, c.tras, c.por_caracter);
      plat.responder(r);
      EXPECT_EQ(enviar_y(r == vbCancel ? esperar_datos : esperar_respuesta, c.comando), c.pregunta);
      EXPECT_EQ(plat.cajas, std::vector{pregunta});
      EXPECT_TRUE(e.operacion.interrumpida);
      EXPECT_FALSE(e.tiempo_agotado);
      EXPECT_FALSE(e.respuesta_lista);
      lejos.callar();
      reabrir();
    }
  }
}

TEST_F(esperas, a_long_block_in_its_fixed_mode_may_take_nine_seconds_and_a_short_frame_speaks) {
  lejos.poner("viejo", plat.ahora());
  plat.DoEvents();
  const modo_fijo modo(serial, 47, 47);
  lejos.contestar(std::string(47, 'F'), 9s);
  EXPECT_EQ(enviar_y(esperar_datos, "C000000007FFF"), 9s);
  EXPECT_TRUE(plat.cajas.empty()) << "what had come before is dropped";
  EXPECT_EQ(serial.pendientes(), 0) << "what had come before is dropped";
  lejos.contestar(marco("7"));
  enviar_y(esperar_datos, "C000000007FFF");
  EXPECT_EQ(textos(), "Ez Port no está activado");
  EXPECT_TRUE(e.operacion.interrumpida);
}

TEST_F(esperas, in_a_broken_operation_waits_return_at_once_and_nothing_goes_out_but_an_allowed_d) {
  interrumpir(e, rotura::abandonada);
  const auto antes = plat.pasadas;
  for (const auto como : {esperar_respuesta, esperar_con_vigilancia}) enviar_y(como, "D");
  EXPECT_EQ(plat.pasadas, antes);
  EXPECT_TRUE(lejos.comandos.empty());
  e.operacion.cierre_permitido = true;
  for (const char* comando : {"a", "D"}) enviar_comando(e, comando);
  EXPECT_EQ(lejos.comandos, std::vector<std::string>{"D"});
}

TEST_F(esperas, no_ends_the_program_and_yes_goes_on_with_a_reply_that_has_come_meanwhile) {
  plat.responder(vbNo);
  EXPECT_THROW(enviar_y(esperar_datos), fin_de_programa);
  plat.responder(vbYes, [this] { lejos.poner(marco("002"), plat.ahora()); });
  enviar_y(esperar_datos);
  EXPECT_EQ(e.bit_wen, 1);
  EXPECT_FALSE(e.operacion.interrumpida);
  EXPECT_EQ(lejos.comandos.back(), "c");
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
    EXPECT_TRUE(modo_de_siempre());
    EXPECT_TRUE(e.operacion.interrumpida);
    EXPECT_EQ(e.operacion.cierre_permitido, responde) << "only an answered A makes a D worth sending";
    reabrir();
  }
}

TEST_F(esperas, a_vanished_device_and_a_second_request_to_close_end_a_wait_without_a_question) {
  for (const bool desaparece : {true, false}) {
    e.peticiones_cierre = 1;
    plat.programar(plat.ahora() + 300ms, [&] { desaparece ? lejos.cuelga = true : ++e.peticiones_cierre; });
    EXPECT_EQ(enviar_y(esperar_datos), 300ms);
    EXPECT_TRUE(e.operacion.interrumpida);
    EXPECT_TRUE(e.tiempo_agotado != desaparece);
    lejos.cuelga = false;
    reabrir();
  }
}

TEST_F(esperas, the_watchdog_asks_each_second_and_yes_sends_a_whatever_the_wait_was_for) {
  for (const respuesta_caja r : {vbYes, vbYes, vbNinguna}) plat.responder(r);
  plat.tiempo_de_caja = 7s;
  EXPECT_EQ(enviar_y(esperar_con_vigilancia, "D"), 3 * 8s) << "one before each question, seven for its answer";
  EXPECT_EQ(lejos.comandos, (std::vector<std::string>{"D", "A", "A"}));
  EXPECT_TRUE(e.tiempo_agotado);
  EXPECT_FALSE(e.respuesta_lista);
  EXPECT_FALSE(e.spera_resp.Enabled());
  EXPECT_FALSE(e.operacion.interrumpida) << "a guarded wait that was given up is no broken operation";
}

TEST_F(esperas, behind_a_yes_the_program_stands_still_for_half_a_second_at_most_and_late_replies_answer_nothing_else) {
  constexpr instante nunca{-1};
  const struct {
    instante piensa;
    std::vector<instante> tras;
    instante quieto;
  } casos[] = {{0s, {nunca, 1ms}, 500ms},    {12s, {nunca, nunca, 1ms}, 500ms}, {2s, {nunca, nunca, nunca, 1ms}, 500ms},
               {0s, {1300ms, 400ms}, 100ms}, {0s, {1500ms, 1500ms}, 500ms},     {2s, {4500ms, 3s, 4s}, 500ms}};
  for (const auto& c : casos) {
    reabrir();
    plat.tiempo_de_caja = c.piensa;
    for (const instante t : c.tras) t == nunca ? lejos.contestar("") : lejos.contestar(marco("0"), t);
    for (std::size_t i = 1; i < c.tras.size(); ++i) plat.responder(vbYes);
    instante llega = nunca;
    plat.en_cada_pasada = [&] { llega = llega == nunca && e.respuesta_lista ? plat.ahora() : llega; };
    enviar_y(esperar_con_vigilancia, "A");
    plat.en_cada_pasada = nullptr;
    EXPECT_LE(plat.ahora() - llega, c.quieto) << c.tras.size();
    for (const char* respuesta : {"0", "022"}) {
      lejos.contestar(marco(respuesta));
      enviar_y(esperar_datos, respuesta == std::string("0") ? "a" : "c");
    }
    EXPECT_EQ(e.registro_estado, 0x22) << c.tras.size();
    EXPECT_FALSE(e.operacion.interrumpida || e.linea_inquieta) << c.tras.size();
    plat.olvidar_respuestas();
    lejos.callar();
    e.registro_estado = 0;
  }
}

TEST_F(esperas, the_watchdog_that_a_reset_armed_breaks_off_on_cancel) {
  lejos.contestar(marco("1RESET"));
  plat.responder(vbCancel);
  EXPECT_EQ(enviar_y(esperar_datos), 1ms + 1s);
  EXPECT_TRUE(e.operacion.interrumpida);
}

}  // namespace
