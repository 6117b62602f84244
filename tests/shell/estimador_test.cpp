#include "shell/estimador.h"

#include <set>

#include "banco_ordenes.h"

using namespace apoyo;

namespace {

/// An operation over 100,000 bytes.
struct estimador_test : banco_ordenes {
  estimador_test() {
    m.total = 100'000;
    m.cuantas = 1;
    m.en_curso = true;
    m.cual = marcha::labor::grabar;
  }
  /// Lets time pass in steps of a tenth of a second, each with its share of `bytes`, and gives all that was said.
  std::set<std::string> andar(instante cuanto, std::int64_t bytes) {
    std::set<std::string> dichos;
    const std::int64_t pasos = cuanto / 100ms, desde = m.hechos;
    for (std::int64_t i = 1; i <= pasos; ++i) {
      ahora += 100ms;
      m.hechos = desde + bytes * i / pasos;
      e.mirar(m, ahora);
      dichos.insert(e.dicho().breve);
    }
    return dichos;
  }
  estimador e;
  marcha m;
  instante ahora{0};
};

TEST_F(estimador_test, it_counts_down_evenly_and_seldom_and_tells_a_real_change) {
  const struct {
    instante cuanto;
    std::int64_t bytes;
    std::size_t cambios;
    const char* breve;
  } casos[] = {{900ms, 900, 1, "0 %"},
               {1100ms, 1100, 3, "1 % · 1,0 kB/s · 1:38"},
               {40s, 40'000, 80, "41 % · 1,0 kB/s · 0:58"},
               {12s, 36'000, 26, "76 % · 3,0 kB/s · 0:09"},
               {7s, 21'000, 16, "97 % · 3,0 kB/s · 0:02"}};
  for (const auto& c : casos) {
    EXPECT_LE(andar(c.cuanto, c.bytes).size(), c.cambios);
    EXPECT_EQ(e.dicho().breve, c.breve);
  }
  EXPECT_EQ(e.dicho().extenso, "Grabando: 97 %, 3,0 kB/s, quedan 0:02");
  ++m.cuantas;
  m.total = 0;
  m.inicio = ahora;
  andar(2500ms, 0);
  EXPECT_EQ(e.dicho().breve + e.dicho().extenso, "Grabando · 0:02Grabando: van 0:02");
  m.gastado = 59'960ms;
  e.acabar(m);
  EXPECT_EQ(e.dicho().breve, "Duración: 1:00");
  EXPECT_EQ(reloj_de(59) + reloj_de(3723) + velocidad_de(0.4) + velocidad_de(1049) + velocidad_de(9950),
            "0:591:02:030 B/s1,0 kB/s10 kB/s");
}

TEST_F(estimador_test, a_restless_pace_gives_a_restful_countdown) {
  andar(10s, 10'000);
  std::set<std::string> vistos;
  for (int i = 0; i < 20; ++i) {
    for (const std::string& uno : andar(500ms, i % 2 == 0 ? 300 : 700)) vistos.insert(uno.substr(uno.size() - 4));
  }
  EXPECT_LE(vistos.size(), 12u) << "ten seconds, each told once";
}

TEST_F(estimador_test, a_command_lasts_as_long_as_its_work_without_the_time_in_which_boxes_were_open) {
  plat.tiempo_de_caja = 60s;
  correr(men_prog_t_Click, {.error_en = 9});
  EXPECT_TRUE(plat.ahora() > 120s && f.progreso.ritmo.gastado > 20ms && f.progreso.ritmo.gastado < 1s);
  correr(men_reset_Click);
  EXPECT_EQ(f.progreso.ritmo.gastado, 0s) << "a reset is no work";
}

}  // namespace
