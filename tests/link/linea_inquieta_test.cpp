#include "apoyo/banco.h"
#include "apoyo/guion.h"

namespace {

using namespace apoyo;

struct linea_inquieta : banco_enlace<guion> {
  void SetUp() override { reabrir(); }
  /// What a bracket that begins now takes for the reply to its first command behind "A".
  std::string segunda_respuesta() {
    enviar_comando(e, "A");
    esperar_con_vigilancia(e);
    lejos.contestar(marco("055"), 800ms);
    enviar_comando(e, "c");
    esperar_respuesta(e);
    return e.respuesta;
  }
  void dejar_inquieta() {
    interrumpir(e, rotura::abandonada);
    reabrir();
  }
  const std::string buena = "055" + suma_comprobacion("055");
};

TEST_F(linea_inquieta, replies_to_what_was_broken_off_given_up_or_drowned_in_noise_do_not_answer_the_next_bracket) {
  const std::string mala = trama("099"), sin_respuesta, ruido = "\x02zzzz";
  for (const std::string& que : {mala, sin_respuesta, ruido}) {
    que == sin_respuesta ? plat.responder(vbCancel) : lejos.contestar(que);
    if (que == ruido) {
      const modo_fijo modo(serial, 0, 5);
      enviar_comando(e, "g");
      esperar_datos_rapido(e);
    } else {
      enviar_comando(e, "D");
      esperar_con_vigilancia(e);
    }
    reabrir();
    // The late reply comes behind that to the "A".
    lejos.contestar(marco("0") + marco("0"), 1ms, 100ms);
    EXPECT_EQ(segunda_respuesta(), buena) << que;
    EXPECT_FALSE(e.operacion.interrumpida) << que;
    reabrir();
  }
}

TEST_F(linea_inquieta, strays_are_not_counted_as_the_late_answers_of_a_repeated_opening) {
  dejar_inquieta();
  lejos.poner(marco("0") + marco("0"), 1100ms);
  for (int i = 0; i < 2; ++i) lejos.contestar(marco("0"), 7s);
  plat.responder(vbYes);
  EXPECT_EQ(segunda_respuesta(), buena);
}

TEST_F(linea_inquieta, an_etx_alone_repeats_a_text_but_answers_nothing) {
  for (const std::string& respuesta : {marco("055"), std::string("\x03")}) {
    EXPECT_FALSE(e.operacion.interrumpida);
    lejos.contestar(respuesta);
    enviar_comando(e, "i");
    esperar_respuesta(e);
  }
  EXPECT_TRUE(e.respuesta_lista);
  EXPECT_TRUE(e.operacion.interrumpida);
}

TEST_F(linea_inquieta, a_line_that_never_comes_to_rest_breaks_the_bracket_off) {
  dejar_inquieta();
  for (int i = 0; i < 40; ++i) lejos.poner(marco("0"), i * 1s);
  enviar_comando(e, "A");
  esperar_con_vigilancia(e);
  EXPECT_TRUE(e.operacion.interrumpida);
  EXPECT_TRUE(plat.ahora() < 20s);
  EXPECT_TRUE(e.linea_inquieta) << "and so for the next one";
}

}  // namespace
