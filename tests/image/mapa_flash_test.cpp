#include "image/mapa_flash.h"

#include <gtest/gtest.h>

#include <string>

namespace morvane {
namespace {

/// A letter a cell for what is known of the chip, in upper case where the image holds something, for the first ten.
std::string foto(const mapa_flash& m) {
  std::string texto;
  for (int i = 0; i < 10; ++i) {
    char letra = '.';
    for (const auto& [cual, como] : {std::pair{hecho::borrada, 'b'},
                                     {hecho::leida, 'l'},
                                     {hecho::escrita_antes, 'a'},
                                     {hecho::escrita, 'e'},
                                     {hecho::igual, 'i'},
                                     {hecho::distinta, 'd'}}) {
      if (m.sabe(i, cual)) letra = como;
    }
    if (m.sabe(i, hecho::imagen)) letra = letra == '.' ? ':' : static_cast<char>(letra - 'a' + 'A');
    texto += letra;
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
  m.empezar_escritura(0x104);
  m.escribir(0x104);
  EXPECT_EQ(foto(m), ".bbbbbbbbb") << "what is being written is neither";
  EXPECT_EQ(m.cabeza(), (tramo{0, 0x200}));
  const unsigned long antes = m.cambios();
  for (std::int32_t dir = 0x108; dir < 0x200; dir += 4) m.escribir(dir);
  EXPECT_EQ(m.cambios(), antes) << "only a new cell is a change";
  m.escribir(0x200);
  EXPECT_EQ(foto(m), "e.bbbbbbbb");
  m.fin_de_escritura(0x204, false);
  EXPECT_EQ(foto(m), "eebbbbbbbb");
  EXPECT_TRUE(m.escrito() == (tramo{0x104, 0x204}) && m.cabeza().vacio());
  m.borrado();
  escribir(m, 0, 0x404, true);
  EXPECT_EQ(foto(m), "ee.bbbbbbb");
  EXPECT_EQ(m.escrito(), (tramo{0, 0x400}));
  m.borrado();
  escribir(m, 0, 0, false);
  EXPECT_EQ(foto(m), "bbbbbbbbbb") << "stopped before the first group";
  escribir(m, 0x3FFFC, 0x40004);
  EXPECT_TRUE(m.sabe(511, hecho::escrita) && m.escrito() == (tramo{0x3FFFC, 0x40000}));
}

TEST(mapa_flash, what_no_longer_holds_is_forgotten) {
  std::vector<std::uint8_t> imagen(total_celdas, 0xFF);
  imagen[0x3FF] = imagen[0x400] = 0;
  mapa_flash m;
  m.nueva_imagen(imagen);
  EXPECT_EQ(foto(m), ".::.......");
  m.borrado();
  escribir(m, 0x200, 0x600);
  m.comparado({0, 0x601}, true);
  m.lectura({0, 0x200});
  EXPECT_EQ(foto(m), "iIIbbbbbbb");
  m.empezar_verificacion();
  EXPECT_EQ(foto(m), "lEEbbbbbbb") << "a new verification begins with nothing";
  m.comparado({0x200, 0x401}, false);
  EXPECT_EQ(foto(m), "lDDbbbbbbb");
  imagen.assign(total_celdas, 0xFF);
  m.nueva_imagen(imagen);
  EXPECT_EQ(foto(m), "laabbbbbbb") << "the chip is as it was";
  m.no_borrado({0, 0x8000});
  EXPECT_EQ(foto(m), "laabbbbbbb") << "what was written accounts for it";
  m.no_borrado({0xA00, 0xA01});
  EXPECT_EQ(foto(m), "laabb.bbbb") << "and nothing does here";
  m.olvidar({0x414, 0x418});
  EXPECT_EQ(foto(m), "la.bb.bbbb");
  m.olvidar_chip();
  EXPECT_EQ(foto(m), "..........");
  EXPECT_TRUE(m.escrito().vacio() && m.leido().vacio());
}

TEST(mapa_flash, a_read_covers_what_was_stored_in_one_piece) {
  mapa_flash m;
  m.lectura({0x20, 0x40});
  m.lectura({0x40, 0x60});
  EXPECT_EQ(m.leido(), (tramo{0x20, 0x60}));
  m.lectura({0x80, 0xA0});
  EXPECT_EQ(m.leido(), (tramo{0x80, 0xA0})) << "a part between them could not be read";
  m.lectura({0xA0, 0x1000000});
  EXPECT_EQ(m.leido(), (tramo{0x80, total_flash}));
  m.lectura({-64, -32});
  EXPECT_EQ(m.leido().hasta, total_flash) << "outside of the flash there is nothing to know";
  m.empezar_lectura();
  EXPECT_EQ(foto(m), "..........");
}

}  // namespace
}  // namespace morvane
