#include "bridge/traza.h"

#include <gtest/gtest.h>

#include "bridge/cronica.h"
#include "bridge/placa.h"
#include "bridge/reproduccion.h"

namespace puente {
namespace {

using namespace std::chrono_literals;

struct grabador {
  std::string texto;
  cronica c{[this](char d, std::string_view crudo, instante t) { texto += renglon_de_traza(d, crudo, t) + "\n"; }};
};

/// What a guest of fixed habits hears who sends the next command when a frame has come, or after 2 s.
std::string oye(extremo& lejos, cronica* c = nullptr) {
  std::string oido, todo;
  instante ahora{0};
  lejos.abierta(ahora);
  if (c != nullptr) c->sucede("abre", ahora);
  for (const std::string comando : {"A", "c", "a", "d2E", "C000000000400", "C008000007FFF", "D"}) {
    const std::string trama = "\x02" + comando + suma(comando) + "\x03";
    if (c != nullptr) c->va(trama, ahora);
    lejos.entra(trama, ahora);
    const instante limite = ahora + 2s;
    for (oido.clear(); ahora < limite && oido.find('\x03') == std::string::npos && !lejos.colgada();) {
      const std::string viene = lejos.sale(ahora);
      if (c != nullptr) c->viene(viene, ahora);
      oido += viene;
      if (oido.find('\x03') != std::string::npos) break;
      ahora = std::max(ahora, std::min(lejos.proximo().value_or(limite), limite));
    }
    todo += std::to_string(ahora.count()) + ":" + oido + "\n";
  }
  if (c != nullptr) c->acabar();
  return todo;
}

TEST(traza, what_a_board_did_is_played_to_the_same_guest_character_by_character) {
  const faltas casos[] = {{},
                          {.cortada_en = 3, .cortada_tras = 2},
                          {.retrasada_en = 2, .retraso_ms = 700},
                          {.calla_en = 4},
                          {.reset_en = 5, .reset_repetido = 3},
                          {.duplicada_en = 2},
                          {.saluda = true},
                          {.ruido = 9, .ruido_detras = 4},
                          {.altera = 7, .altera_ida = 12},
                          {.pierde = 8, .pierde_ida = 13},
                          {.goteo_ms = 3}};
  for (const faltas& f : casos) {
    for (const unsigned baudios : {0U, 57600U}) {
      chip c;
      placa p(c, ritmo{baudios}, f);
      grabador g;
      const std::string de_placa = oye(p, &g.c);
      auto [renglones, error] = leer_traza(g.texto);
      ASSERT_EQ(error, "") << g.texto;
      reproduccion r(renglones, false);
      EXPECT_EQ(oye(r), de_placa) << g.texto;
      r.sale(1h);
      EXPECT_TRUE(r.entera()) << r.lo_que_falta() << r.desacuerdo();
    }
  }
}

TEST(traza, a_guest_that_does_something_else_is_told_so) {
  const std::string texto =
      "     0.000000 > <STX>A41<ETX>\n     0.001000 < <STX>030<ETX>\n\n     0.002000 ! cuelga\r\n";
  reproduccion otra(leer_traza(texto).renglones, true), menos(leer_traza(texto).renglones, true),
      mas(leer_traza(texto.substr(0, 60)).renglones, true);
  otra.entra(
      "\x02"
      "D44",
      instante{5});
  EXPECT_EQ(otra.desacuerdo(), "línea 1 de la traza: se esperaba <STX>A41<ETX> y ha llegado <STX>D44");
  EXPECT_TRUE(otra.colgada());
  menos.entra(
      "\x02"
      "A4",
      instante{5});
  EXPECT_EQ(menos.lo_que_falta(), "la traza se ha quedado en su línea 1: faltaba <STX>A41<ETX>");
  menos.entra("1\x03", instante{6});
  EXPECT_EQ(menos.sale(instante{6}),
            "\x02"
            "030\x03");
  EXPECT_TRUE(menos.colgada() && menos.entera());
  mas.entra(
      "\x02"
      "A41\x03",
      instante{6});
  mas.sale(instante{6});
  EXPECT_FALSE(mas.colgada());
  mas.entra("<x", instante{7});
  EXPECT_EQ(mas.desacuerdo(), "tras el final de la traza ha llegado <3C>x");
}

TEST(traza, each_character_survives_and_what_is_no_trace_is_refused) {
  std::string todos;
  for (int i = 0; i < 256; ++i) todos += static_cast<char>(i);
  todos += "<STX><41>";
  EXPECT_EQ(leer_traza(renglon_de_traza('<', todos, instante{1'500'000})).renglones.at(0).crudo, todos);
  EXPECT_EQ(leer_traza("1.000000 < <<41><").renglones.at(0).crudo, "<A<") << "as older ones were written";
  for (const char* mala : {"x", "1.5 < a", "1.000000 ? a", "1.000000 ! nada", "-1.000000 < a", "1.00000x < a"}) {
    EXPECT_EQ(leer_traza(std::string("     0.000000 < a\n") + mala).error, "línea 2: no es un renglón de una traza");
  }
  EXPECT_EQ(leer_traza("\n").error, "no tiene ningún renglón");
}

}  // namespace
}  // namespace puente
