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

}  // namespace
