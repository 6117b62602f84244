#include "image/mapa_flash.h"

#include <gtest/gtest.h>

#include <string>

namespace morvane {
namespace {

/// A letter a cell for the strongest of the facts that are known, for the first ten.
std::string foto(const mapa_flash& m) {
  std::string texto(10, '.');
  for (int i = 0; i < 10; ++i) {
    for (unsigned n = 0; n < 7; ++n) {
      if (m.sabe(i, static_cast<hecho>(1U << n))) texto[static_cast<std::size_t>(i)] = ":bealid"[n];
    }
  }
  return texto;
}

void escribir(mapa_flash& m, std::int32_t desde, std::int32_t hasta, bool rota = false) {
  m.empezar_escritura(desde);
  for (std::int32_t dir = desde; dir < hasta; dir += 4) m.escribir(dir);
  m.fin_de_escritura(hasta, rota);
}

TEST(mapa_flash, the_write_head_leaves_written_cells_behind_and_an_unknown_one_where_it_broke_off) {
  mapa_flash m;
  m.borrado();
  escribir(m, 0x104, 0x204);
  EXPECT_EQ(foto(m), "eebbbbbbbb");
  EXPECT_TRUE(m.escrito() == (tramo{0x104, 0x204}) && m.cabeza().vacio());
  m.borrado();
  escribir(m, 0, 0x404, true);
  EXPECT_EQ(foto(m), "ee.bbbbbbb");
  EXPECT_EQ(m.escrito(), (tramo{0, 0x400}));
  m.borrado();
  escribir(m, 0, 0);
  EXPECT_EQ(foto(m), "bbbbbbbbbb") << "stopped before the first group";
  escribir(m, 0x3FFFC, 0x40004);
  EXPECT_TRUE(m.sabe(511, hecho::escrita) && m.escrito() == (tramo{0x3FFFC, 0x40000}));
}

TEST(mapa_flash, what_no_longer_holds_is_forgotten) {
  std::vector<std::uint8_t> imagen(total_celdas, 0xFF);
  imagen[0x3FF] = imagen[0x400] = 0;
  mapa_flash m;
  m.nueva_imagen(imagen);
  m.borrado();
  escribir(m, 0x200, 0x600);
  m.comparado({0, 0x601}, true);
  m.lectura({0, 0x200});
  EXPECT_EQ(foto(m), "iiibbbbbbb");
  m.empezar_verificacion();
  m.comparado({0x200, 0x401}, false);
  EXPECT_EQ(foto(m), "lddbbbbbbb");
  m.nueva_imagen(std::vector<std::uint8_t>(total_celdas, 0xFF));
  m.no_borrado({0, 0x8000});
  EXPECT_EQ(foto(m), "laabbbbbbb") << "the chip is as it was: what was written accounts for data";
  m.no_borrado({0xA00, 0xA01});
  EXPECT_EQ(foto(m), "laabb.bbbb") << "and nothing does here";
  m.olvidar_chip();
  EXPECT_TRUE(foto(m) == ".........." && m.escrito().vacio() && m.leido().vacio());
}

TEST(mapa_flash, a_read_covers_what_was_stored_in_one_piece) {
  mapa_flash m;
  for (const tramo t : {tramo{0x20, 0x40}, tramo{0x80, 0xA0}, tramo{0xA0, 0x1000000}, tramo{-64, -32}}) m.lectura(t);
  EXPECT_EQ(m.leido(), (tramo{0x80, total_flash})) << "what was between the first two could not be read";
}

}  // namespace
}  // namespace morvane
