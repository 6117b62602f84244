#include <algorithm>
#include <random>

#include "banco.h"
#include "bridge/traza.h"

namespace puente {
namespace {

// Frames are written out to the last character, so that no routine of the board vouches for another.
TEST(Ordenes, TramasYRespuestas) {
  const std::pair<const char*, const char*> casos[] = {
      {"<c63>", "<737>"},                // closed chip
      {"<A41>", "<030>"},                // open
      {"<c63>", "<00090>"},              // status
      {"<a61>", "<030>"},                // write enable
      {"<d2EDB>", "<030>"},              // configuration
      {"<g0004001234ABCD5F>", "<636>"},  // word without enable
      {"<A42>", "<333>"},                // wrong checksum
      {"<j6a>", "<333>"},                // lower-case checksum
      {"<41>", "<434>"},                 // too short for a checksum
      {"<>", "<434>"},
      {"<A172>", "<232>"},           // longer than its command
      {"<d296>", "<434>"},           // shorter than its command
      {"<d2eFB>", "<535>"},          // lower-case digit
      {"<Z5A>", "<636>"},            // no command
      {"<b62>", "<838>"},            // kept letter
      {"x>y<cc<c63>z>", "<02092>"},  // noise around a frame
  };
  banco b;
  for (const auto& [entra, sale] : casos) EXPECT_EQ(b.crudo(hilo(entra)), hilo(sale)) << entra;
}

TEST(Ordenes, UnaTramaInterminableSeRechaza) {
  banco b;
  EXPECT_EQ(b.crudo("\x02" + std::string(1'000'000, 'A')), "");
  EXPECT_EQ(b.crudo("\x03"), hilo("<232>"));
  EXPECT_EQ(b.manda("A"), bien);
}

TEST(Ordenes, CualquierEntradaDejaLaPlacaEnPie) {
  std::mt19937 azar(3);
  const std::string letras = hilo("<>AaCcdegijD0123456789ABCDEF\xFF");
  banco b;
  for (int i = 0; i < 200'000; ++i) b.crudo(std::string(1, letras[azar() % letras.size()]));
  b.crudo("\x03");
  EXPECT_EQ(b.manda("A"), bien);
}

TEST(Traza, RenglonLegible) {
  EXPECT_EQ(renglon_de_traza('>', hilo("<A41>"), instante{1'234'567}), "     1.234567 > <STX>A41<ETX>");
  EXPECT_EQ(renglon_de_traza('<', "\xFF\n ~", instante{9}), "     0.000009 < <FF><0A> ~");
}

struct caso {
  std::string guion;
  void (*prepara)(chip&) = [](chip&) {};
};

const std::string ff16(32, 'F');

const caso casos[] = {
    // what the program does
    {"A a c=002 d2E c=020 a c=022 i c=021 c=021 c=021 c=020 a c=022 d2E c=020 a g000000FFFFAABB a g000004CCDDEEFF "
     "e00000009=0FFFFAABBCCDDEEFFFF e03FFFF01=0FF D",
     [](chip& c) { c.flash()[0x3FFFF] = 0; }},
    // each write uses up the permission, and needs the configuration
    {"A a d2E a d2E c=020 d2E=6 a g00000000000000 c=020 g00000400000000=6 a i c=020 i=6 e00000004=0FFFFFFFF",
     [](chip& c) { c.sondeos_de_borrado = 0; }},
    {"A a g00000000000000=6 i=6 c=002 e00000004=0FFFFFFFF"},
    // bits only go down, and only within the flash
    {"A a d2E a g0000000FF0AA55 a g000000F0FF0FFF e00000004=000F00A55"},
    {"A a d2E a g04000000000000=9 g00000100000000=9 gFFFFFC00000000=9 c=022"},
    // an erase answers status readings only, as many as it lasts, and a new opening cuts it off
    {"A a d2E a i a=6 d2E=6 e00000020=6 C000000007FFF=6 g00000000000000=6 i=6 c=021 c=020 a",
     [](chip& c) { c.sondeos_de_borrado = 1; }},
    {"A a d2E a i c=021 A c=000 e00FFFF02=0FF00",
     [](chip& c) { c.sondeos_de_borrado = 4, std::ranges::fill(c.flash(), 0); }},
    {"A a d2E a j c=7 D A c=000"},
    // protection counts from the opening on, until an erase
    {"A a d2E a g000414FFFF4AC8 c=020 e00041404=0FFFF4AC8 D A c=080 e00041404=6 C000000000000=6 a d2E a "
     "g00000000000000=6 c=0A2 i c=020 e00041404=0FFFFFFFF D A c=000",
     [](chip& c) { c.sondeos_de_borrado = 0; }},
    // defects
    {"A a d2E a i c=021 c=060 e00000701=012",
     [](chip& c) { c.falla_borrado = true, c.sondeos_de_borrado = 1, c.flash()[7] = 0x12; }},
    {"A a c=000", [](chip& c) { c.falla_permiso = true; }},
    {"A a d2E c=000", [](chip& c) { c.falla_config = true; }},
    {"A c=0FF", [](chip& c) { c.mudo = true; }},
    // reading
    {"A e001A2002=00AFF e03FFFE04=0FF00FFFF e04000001=0FF eFFFFFF01=0FF e00000080=9 e00000000=9",
     [](chip& c) { c.flash()[0x1A20] = 0x0A, c.flash()[0x3FFFF] = 0; }},
    {"A e0000007F=0" + std::string(254, 'F')},
    // sums of one byte, a short range, a block
    {"A C000000000000=0FF000000FF C000000000400=0FF00003FCFF C000000000FFF=0FF0000FF000"},
    {"A C000000001000=0" + ff16 + "FF000FF0FF C03C000007FFF=0" + ff16 + "FF007F8000"},
    {"A C040000007FFF=0" + ff16 + "FF007F8000 CFFFFFFFFFFFF=0" + ff16 + "FFFF000000"},
    {"A C000000000000=07F0000007F C000000007FFF=07F" + ff16.substr(2) + "7F007F7F80",
     [](chip& c) { c.flash()[0] = 0x7F; }},
    {"A C000000000400=00000003FC00 C0000000003FF=0FF00003FC00", [](chip& c) { c.flash()[0x400] = 0; }},
    {"A C000000007FFF=0" + ff16 + "FE007F7FFF", [](chip& c) { c.flash()[0x7FFF] = 0xFE, c.flash()[0x8000] = 0; }},
    {"A C038000007FFF=0" + ff16 + "00007F7F01", [](chip& c) { c.flash()[0x3FFFF] = 0; }},
};

TEST(Chip, Guiones) {
  for (const caso& x : casos) {
    banco b;
    x.prepara(b.c);
    b.recorre(x.guion);
  }
}

}  // namespace
}  // namespace puente
