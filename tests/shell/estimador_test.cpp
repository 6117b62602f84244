#include "shell/estimador.h"

#include <gtest/gtest.h>

#include <set>

using namespace morvane;
using namespace std::chrono_literals;

namespace {

TEST(estimador_test, it_counts_down_evenly_and_seldom_and_tells_a_real_change) {
  estimador e;
  labor m;
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

TEST(estimador_test, an_exchange_that_waits_for_more_than_the_line_is_told) {
  // A word takes 34 characters: 5.9 ms at 57600 baud.
  const struct {
    labor::clase cual;
    instante cada_uno;
    bool lenta;
  } casos[] = {{labor::clase::grabar, 11ms, false},
               {labor::clase::grabar, 22ms, true},
               {labor::clase::leer, 22ms, true},
               {labor::clase::examinar, 22ms, false},
               {labor::clase::borrar, 22ms, false}};
  for (const auto& c : casos) {
    estimador e;
    labor m{.cual = c.cual, .en_curso = true, .total = 4000};
    m.cuantas = 1;
    // What went before does not count.
    trafico t{1'000'000, 7, 57600};
    instante ahora{0};
    for (int i = 0; i < 200; ++i) {
      e.mirar(m, ahora += c.cada_uno, t);
      t.caracteres += 34;
      ++t.respuestas;
      m.hechos += 4;
    }
    EXPECT_EQ(e.dicho().extenso.find("Cada intercambio tarda 22,") != std::string::npos, c.lenta) << e.dicho().extenso;
    m.en_curso = false;
    e.acabar(m);
    EXPECT_EQ(e.dicho().extenso.find("y sus caracteres solo 5,9 ms") != std::string::npos, c.lenta);
  }
}

}  // namespace
