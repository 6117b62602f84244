#include "apoyo/banco.h"
#include "apoyo/guion.h"
#include "link/recepcion.h"

namespace morvane {
namespace {

using namespace apoyo;

struct linea_inquieta : banco_enlace<guion> {
  /// What a bracket that begins now takes for the reply to its first command behind "A".
  std::string segunda_respuesta() {
    enviar_comando(e, "A");
    esperar_con_vigilancia(e);
    lejos.contestar(marco("055"), 800ms);
    enviar_comando(e, "c");
    esperar_respuesta(e);
    return e.respuesta;
  }
};

TEST_F(linea_inquieta, replies_to_what_was_broken_off_given_up_or_drowned_in_noise_do_not_answer_the_next_bracket) {
  struct caso {
    const char* que;
    std::function<void()> pasa;
  };
  const caso casos[] = {
      {"a bad checksum behind a closing whose failure is forgiven",
       [this] {
         lejos.contestar(trama("099"));
         enviar_comando(e, "D");
         esperar_con_vigilancia(e);
         e.corte = {};
       }},
      {"a wait given up by the user",
       [this] {
         plat.responder(vbCancel);
         enviar_comando(e, "D");
         esperar_con_vigilancia(e);
       }},
      {"noise of a reply's length",
       [this] {
         lejos.contestar("\x02zzzz");
         const modo_fijo modo(serial, 0, 5);
         enviar_comando(e, "g");
         esperar_datos_rapido(e);
       }},
  };
  for (const caso& c : casos) {
    reabrir();
    c.pasa();
    reabrir();
    // The late reply comes behind that to the "A".
    lejos.contestar(marco("0") + marco("0"), 1ms, 100ms);
    EXPECT_EQ(segunda_respuesta(), "055" + suma_comprobacion("055")) << c.que;
    EXPECT_FALSE(e.corte.interrumpida) << c.que;
  }
}

TEST_F(linea_inquieta, strays_are_not_counted_as_the_late_answers_of_a_repeated_opening) {
  reabrir();
  interrumpir(e);
  reabrir();
  lejos.poner(marco("0") + marco("0"), 1100ms);
  lejos.contestar(marco("0"), 7s);
  lejos.contestar(marco("0"), 7s);
  plat.responder(vbYes);
  EXPECT_EQ(segunda_respuesta(), "055" + suma_comprobacion("055"));
}

TEST_F(linea_inquieta, an_etx_alone_repeats_a_text_but_answers_nothing) {
  reabrir();
  lejos.contestar(marco("055"));
  enviar_comando(e, "c");
  esperar_respuesta(e);
  lejos.contestar("\x03");
  enviar_comando(e, "i");
  esperar_respuesta(e);
  EXPECT_TRUE(e.respuesta_lista && e.corte.interrumpida);
}

TEST_F(linea_inquieta, a_line_that_never_comes_to_rest_breaks_the_bracket_off) {
  reabrir();
  interrumpir(e);
  reabrir();
  for (int i = 0; i < 40; ++i) lejos.poner(marco("0"), i * 1s);
  enviar_comando(e, "A");
  esperar_con_vigilancia(e);
  EXPECT_TRUE(e.corte.interrumpida);
  EXPECT_LT(plat.ahora(), 20s);
  EXPECT_TRUE(e.linea_inquieta) << "and so for the next one";
}

}  // namespace
}  // namespace morvane
