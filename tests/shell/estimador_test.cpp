#include "shell/estimador.h"

#include <set>

#include "banco_ordenes.h"

using namespace apoyo;

namespace {

struct estimador_test : banco_ordenes {
  /// Lets time pass in steps of a tenth of a second, each with its share of `bytes`, and notes all that was said.
  void andar(instante cuanto, std::int64_t bytes) {
    const std::int64_t pasos = cuanto / 100ms, desde = m.hechos;
    for (std::int64_t i = 1; i <= pasos; ++i) {
      ahora += 100ms;
      m.hechos = desde + bytes * i / pasos;
      e.mirar(m, ahora);
      dichos.insert(e.dicho().breve);
    }
  }
  estimador e;
  marcha m;
  instante ahora{0};
  std::set<std::string> dichos;
};

TEST_F(estimador_test, it_counts_down_evenly_and_seldom_and_tells_a_real_change) {
  m.total = 100'000;
  m.cuantas = 1;
  m.en_curso = true;
  m.cual = marcha::labor::grabar;
  const struct {
    instante cuanto;
    std::int64_t bytes;
    const char* breve;
  } casos[] = {{2s, 2000, "1 % · 1,0 kB/s · 1:38"},
               {40s, 40'000, "41 % · 1,0 kB/s · 0:58"},
               {21s, 42'000, "83 % · 2,0 kB/s · 0:10"},
               {6s, 12'000, "95 % · 2,0 kB/s · 0:04"}};
  for (const auto& c : casos) {
    andar(c.cuanto, c.bytes);
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
