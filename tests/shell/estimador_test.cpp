#include "shell/estimador.h"

#include <gtest/gtest.h>

#include <set>

#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

/// An operation over `total` bytes that moves on as a test says.
struct estimador_test : testing::Test {
  explicit estimador_test(std::int64_t total = 100'000) {
    m.total = total;
    m.cuantas = 1;
    m.en_curso = true;
    m.cual = marcha::labor::grabar;
  }
  /// Lets `cuanto` pass in steps of a tenth of a second, each with its share of `bytes`, and gives all that was said.
  std::vector<std::string> andar(instante cuanto, std::int64_t bytes) {
    const std::int64_t desde = m.hechos;
    const instante inicio = ahora;
    std::vector<std::string> dichos;
    while (ahora < inicio + cuanto) {
      ahora += 100ms;
      m.hechos = desde + bytes * ((ahora - inicio) / 1ms) / (cuanto / 1ms);
      e.mirar(m, ahora);
      if (dichos.empty() || dichos.back() != e.dicho().breve) dichos.push_back(e.dicho().breve);
    }
    return dichos;
  }

  estimador e;
  marcha m;
  instante ahora{0};
};

TEST_F(estimador_test, an_even_pace_counts_down_evenly_and_changes_twice_a_second_at_most) {
  EXPECT_EQ(andar(900ms, 900).back(), "0 %") << "too early to tell a speed";
  andar(1100ms, 1100);
  EXPECT_EQ(e.dicho().breve, "1 % · 1,0 kB/s · 1:38");
  EXPECT_EQ(e.dicho().extenso, "Grabando: 1 %, 1,0 kB/s, quedan 1:38");
  const auto dichos = andar(88s, 88'000);
  EXPECT_LE(dichos.size(), 177u);
  EXPECT_EQ(dichos.back(), "89 % · 1,0 kB/s · 0:10");
  EXPECT_EQ(andar(9s, 9'000).back(), "98 % · 1,0 kB/s · 0:01");
  EXPECT_EQ(andar(3s, 0).back().substr(0, 5), "99 % ") << "still not done";
}

TEST_F(estimador_test, a_restless_pace_gives_a_restful_countdown_and_a_real_change_is_told) {
  andar(10s, 10'000);
  std::set<std::string> vistos;
  for (int i = 0; i < 20; ++i) {
    for (const std::string& uno : andar(500ms, i % 2 == 0 ? 300 : 700)) vistos.insert(uno.substr(uno.size() - 4));
  }
  EXPECT_LE(vistos.size(), 12u) << "ten seconds, each told once";
  andar(12s, 48'000);
  EXPECT_EQ(e.dicho().breve, "66 % · 4,0 kB/s · 0:09");
}

TEST_F(estimador_test, blocks_that_come_at_once_and_work_without_a_measure) {
  m.total = 8 * 32768;
  for (int i = 1; i <= 7; ++i) {
    andar(2s, 0);
    m.hechos += 32768;
  }
  EXPECT_EQ(andar(500ms, 0).back(), "87 % · 16 kB/s · 0:02");
  ++m.cuantas;
  m.total = 0;
  m.inicio = ahora;
  EXPECT_EQ(andar(2500ms, 0).back(), "Grabando · 0:02");
  EXPECT_EQ(e.dicho().extenso, "Grabando: van 0:02");
}

TEST_F(estimador_test, texts_of_times_and_speeds) {
  const std::pair<std::int64_t, const char*> tiempos[] = {{0, "0:00"}, {59, "0:59"}, {60, "1:00"}, {3723, "1:02:03"}};
  for (const auto& [segundos, texto] : tiempos) EXPECT_EQ(reloj_de(segundos), texto);
  const std::pair<double, const char*> rapideces[] = {{0.4, "0 B/s"},     {999, "999 B/s"},  {1049, "1,0 kB/s"},
                                                      {9949, "9,9 kB/s"}, {9950, "10 kB/s"}, {3e5, "300 kB/s"}};
  for (const auto& [rapidez, texto] : rapideces) EXPECT_EQ(velocidad_de(rapidez), texto);
  const std::pair<instante, const char*> duraciones[] = {
      {0s, ""}, {20ms, "Duración: < 0,1 s"}, {59'940ms, "Duración: 59,9 s"}, {59'960ms, "Duración: 1:00"}};
  for (const auto& [gastado, texto] : duraciones) {
    m.gastado = gastado;
    e.acabar(m);
    EXPECT_EQ(e.dicho().breve, texto);
  }
  e.empezar();
  EXPECT_EQ(e.dicho().extenso, "");
}

struct duracion : banco_principal {};

TEST_F(duracion, a_command_lasts_as_long_as_its_work_without_the_time_in_which_boxes_were_open) {
  empezar();
  abrir_archivo("ocho.s19", ocho_bytes);
  f.barra.ButtonClick(3);
  const instante solo = f.progreso.ritmo.gastado;
  EXPECT_TRUE(solo > 20ms && solo < 1s) << solo.count();
  plat.tiempo_de_caja = 60s;
  lejos.placa.fallos.error_en = lejos.placa.tramas() + 9;
  f.barra.ButtonClick(3);
  EXPECT_GE(plat.ahora(), 120s);
  EXPECT_LT(f.progreso.ritmo.gastado, 1s);
  f.barra.ButtonClick(5);
  EXPECT_EQ(f.progreso.ritmo.gastado, 0s) << "a reset is no work";
}

}  // namespace
