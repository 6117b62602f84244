#include "image/mapa_flash.h"

#include <gtest/gtest.h>

namespace morvane {
namespace {

// What the commands leave on the map is tested with them.
TEST(mapa_flash, a_verification_forgets_the_one_before_and_a_read_what_lay_before_a_gap) {
  mapa_flash m;
  m.comparado({0, 0x401}, true);
  EXPECT_TRUE(m.sabe(1, saber::igual));
  EXPECT_FALSE(m.sabe(2, saber::igual));
  m.empezar_verificacion();
  m.comparado({0x200, 0x401}, false);
  EXPECT_FALSE(m.sabe(0, saber::igual));
  EXPECT_TRUE(m.sabe(2, saber::distinta));
  for (const tramo t : {tramo{0x20, 0x40}, tramo{0x80, 0xA0}, tramo{0xA0, 0x1000000}, tramo{-64, -32}}) m.lectura(t);
  EXPECT_EQ(m.leido(), (tramo{0x80, total_flash}));
  m.borrado();
  EXPECT_TRUE(m.sabe(0, saber::leida)) << "what was read stands in the buffer all the same";
  EXPECT_TRUE(m.sabe(0, saber::borrada)) << "what was read stands in the buffer all the same";
  m.empezar_escritura(0x3FFFC);
  for (const std::int32_t dir : {0x3FFFC, 0x40000}) m.escribir(dir);
  m.fin_de_escritura(0x40004, false);
  EXPECT_TRUE(m.sabe(511, saber::escrita));
  EXPECT_EQ(m.escrito(), (tramo{0x3FFFC, 0x40000}));
}

}  // namespace
}  // namespace morvane
