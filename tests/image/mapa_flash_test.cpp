#include "image/mapa_flash.h"

#include <gtest/gtest.h>

#include <string>

namespace morvane {
namespace {

struct mapa : testing::Test {
  void escribir(std::int32_t desde, std::int32_t hasta, bool rota = false) {
    m.empezar_escritura(desde);
    for (std::int32_t dir = desde; dir < hasta; dir += 4) m.escribir(dir);
    m.fin_de_escritura(hasta, rota);
  }
  /// A letter a cell for the strongest of the facts that are known, for the first six.
  std::string foto() const {
    std::string texto(6, '.');
    for (int i = 0; i < 6; ++i) {
      for (unsigned n = 0; n < 7; ++n) {
        if (m.sabe(i, static_cast<hecho>(1U << n))) texto[static_cast<std::size_t>(i)] = ":bealid"[n];
      }
    }
    return texto;
  }
  mapa_flash m;
};

TEST_F(mapa, the_write_head_leaves_written_cells_behind_and_an_unknown_one_where_it_broke_off) {
  m.borrado();
  escribir(0x104, 0x204);
  EXPECT_EQ(foto(), "eebbbb");
  EXPECT_TRUE(m.escrito() == (tramo{0x104, 0x204}) && m.cabeza().vacio());
  m.borrado();
  escribir(0, 0x404, true);
  EXPECT_EQ(foto(), "ee.bbb");
  EXPECT_EQ(m.escrito(), (tramo{0, 0x400}));
  escribir(0x3FFFC, 0x40004);
  EXPECT_TRUE(m.sabe(511, hecho::escrita) && m.escrito() == (tramo{0x3FFFC, 0x40000}));
}

TEST_F(mapa, what_no_longer_holds_is_forgotten) {
  std::vector<std::uint8_t> imagen(total_celdas, 0xFF);
  imagen[0x3FF] = imagen[0x400] = 0;
  m.nueva_imagen(imagen);
  m.borrado();
  escribir(0x200, 0x600);
  m.comparado({0, 0x601}, true);
  m.lectura({0, 0x200});
  EXPECT_EQ(foto(), "iiibbb");
  m.empezar_verificacion();
  m.comparado({0x200, 0x401}, false);
  EXPECT_EQ(foto(), "lddbbb");
  m.nueva_imagen(std::vector<std::uint8_t>(total_celdas, 0xFF));
  m.no_borrado({0, 0x8000});
  EXPECT_EQ(foto(), "laabbb") << "the chip is as it was: what was written accounts for data";
  m.no_borrado({0x800, 0x801});
  EXPECT_EQ(foto(), "laab.b") << "and nothing does here";
  for (const tramo t : {tramo{0x80, 0xA0}, tramo{0xA0, 0x1000000}, tramo{-64, -32}}) m.lectura(t);
  EXPECT_EQ(m.leido(), (tramo{0x80, total_flash})) << "what was between the reads could not be read";
}

}  // namespace
}  // namespace morvane
