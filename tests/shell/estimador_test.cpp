#include "shell/estimador.h"

#include <set>

#include "banco_ordenes.h"

using namespace apoyo;

namespace {

using estimador_test = banco_ordenes;

TEST_F(estimador_test, it_counts_down_evenly_and_seldom_and_tells_a_real_change) {
  estimador e;
  marcha m;
  m.total = 100'000;
  m.cuantas = 1;
  m.en_curso = true;
  // So many tenths of a second with so many bytes in each.
  const struct {
    int decimas;
    std::int64_t bytes;
    const char* breve;
  } casos[] = {{20, 100, "1 % · 1,0 kB/s · 1:38"},
               {400, 100, "41 % · 1,0 kB/s · 0:58"},
               {210, 200, "83 % · 2,0 kB/s · 0:10"},
               {60, 200, "95 % · 2,0 kB/s · 0:04"}};
  std::set<std::string> dichos;
  instante ahora{0};
  for (const auto& c : casos) {
    for (int i = 0; i < c.decimas; ++i) {
      m.hechos += c.bytes;
      e.mirar(m, ahora += 100ms);
      dichos.insert(e.dicho().breve);
    }
    EXPECT_EQ(e.dicho().breve, c.breve);
  }
  EXPECT_LE(dichos.size(), 138U) << "not more than two a second";
  EXPECT_EQ(reloj_de(3723) + velocidad_de(9950), "1:02:0310 kB/s");
}

TEST_F(estimador_test, a_command_lasts_as_long_as_its_work_without_the_time_in_which_boxes_were_open) {
  plat.tiempo_de_caja = 60s;
  correr(men_prog_t_Click, {.error_en = 9});
  EXPECT_TRUE(plat.ahora() > 120s && f.progreso.ritmo.gastado > 20ms && f.progreso.ritmo.gastado < 1s);
  correr(men_reset_Click);
  EXPECT_EQ(f.progreso.ritmo.gastado, 0s) << "a reset is no work";
}

}  // namespace
