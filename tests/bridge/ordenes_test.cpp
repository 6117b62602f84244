#include <gtest/gtest.h>

#include <algorithm>

#include "banco.h"

namespace puente {
namespace {

struct caso {
  const char* que;
  std::string entra, sale;
};

// Frames are written out to the last character, so that no routine of the board vouches for another.
TEST(Ordenes, TramasYRespuestas) {
  const caso casos[] = {
      {"closed chip", "<c63>", "<737>"},
      {"open", "<A41>", "<030>"},
      {"status", "<c63>", "<00090>"},
      {"write enable", "<a61>", "<030>"},
      {"latch shows", "<c63>", "<00292>"},
      {"configuration", "<d2EDB>", "<030>"},
      {"configuration shows", "<c63>", "<02092>"},
      {"word without enable", "<g0004001234ABCD5F>", "<636>"},
      {"wrong checksum", "<A42>", "<333>"},
      {"lower-case checksum", "<j6a>", "<333>"},
      {"too short for a checksum", "<41>", "<434>"},
      {"empty", "<>", "<434>"},
      {"longer than its command", "<A172>", "<232>"},
      {"shorter than its command", "<d296>", "<434>"},
      {"lower-case digit", "<d2eFB>", "<535>"},
      {"no command", "<Z5A>", "<636>"},
      {"kept letter", "<b62>", "<838>"},
      {"noise around a frame", "x>y<cc<c63>z>", "<02092>"},
      {"close", "<D44>", "<030>"},
  };
  banco b;
  for (const caso& x : casos) EXPECT_EQ(b.crudo(hilo(x.entra)), hilo(x.sale)) << x.que;
}

TEST(Ordenes, UnaTramaInterminableSeRechazaYNoSeGuarda) {
  banco b;
  EXPECT_EQ(b.crudo("\x02" + std::string(1'000'000, 'A')), "");
  EXPECT_EQ(b.crudo("\x03"), hilo("<232>"));
  EXPECT_EQ(b.manda("A"), bien);
}

TEST(Ordenes, Lectura) {
  banco b;
  b.c.flash()[0x1A20] = 0x0A;
  b.c.flash()[0x3FFFF] = 0;
  b.manda("A");
  const std::string ff32(64, 'F');
  const std::pair<const char*, std::string> casos[] = {
      {"e001A2020", "00A" + ff32.substr(2)},
      {"e001A2016", "00A" + std::string(42, 'F')},
      {"e03FFFE20", "0FF00" + ff32.substr(4)},
      {"e04000020", "0" + ff32},
      {"eFFFFFF01", "0FF"},
      {"e0000007F", "0" + std::string(254, 'F')},
      {"e00000080", "9"},
      {"e00000000", "9"},
  };
  for (const auto& [comando, contenido] : casos) EXPECT_EQ(b.manda(comando), banco::en_trama(contenido)) << comando;
}

struct rango {
  const char* comando;
  std::size_t largo, marca, suma;
  const char *borrado, *suma_borrado;
};

// Positions count from 1 in the raw reply.
const rango rangos[] = {
    {"C000000000000", 15, 3, 5, "FF", "000000FF"},   {"C000000000400", 16, 3, 6, "FF", "0003FCFF"},
    {"C000000007FFF", 47, 35, 37, "FF", "007F8000"}, {"C038000007FFF", 47, 35, 37, "FF", "007F8000"},
    {"C040000007FFF", 47, 35, 37, "FF", "007F8000"}, {"C03C000007FFF", 47, 35, 37, "FF", "007F8000"},
    {"CFFFFFFFFFFFF", 47, 35, 37, "FF", "FF000000"},
};

TEST(Ordenes, SumasDeUnChipBorrado) {
  banco b;
  b.manda("A");
  for (const rango& r : rangos) {
    const std::string s = b.manda(r.comando);
    ASSERT_EQ(s.size(), r.largo) << r.comando;
    EXPECT_EQ(s.substr(r.marca - 1, 2), r.borrado) << r.comando;
    EXPECT_EQ(s.substr(r.suma - 1, 8), r.suma_borrado) << r.comando;
    EXPECT_EQ(s, banco::en_trama(s.substr(1, s.size() - 4))) << r.comando;
  }
}

struct suma_caso {
  std::uint32_t dir;
  int valor;
  const char *comando, *suma;
  bool borrado;
};

TEST(Ordenes, SumasConUnByteGrabado) {
  const suma_caso casos[] = {
      {0, 0x7F, "C000000000000", "0000007F", false},  {0x400, 0, "C000000000400", "0003FC00", false},
      {0x401, 0, "C000000000400", "0003FCFF", true},  {0x7FFF, 0xFE, "C000000007FFF", "007F7FFF", false},
      {0x8000, 0, "C000000007FFF", "007F8000", true}, {0x3FFFF, 0, "C038000007FFF", "007F7F01", false},
  };
  for (const suma_caso& x : casos) {
    banco b;
    b.manda("A");
    b.c.flash()[x.dir] = static_cast<std::uint8_t>(x.valor);
    const std::string s = b.manda(x.comando);
    const auto* r = std::find_if(std::begin(rangos), std::end(rangos),
                                 [&](const rango& y) { return std::string_view(y.comando) == x.comando; });
    ASSERT_EQ(s.size(), r->largo) << x.comando;
    EXPECT_EQ(s.substr(r->marca - 1, 2) == "FF", x.borrado) << x.dir << ' ' << x.comando;
    EXPECT_EQ(s.substr(r->suma - 1, 8), x.suma) << x.dir << ' ' << x.comando;
  }
}

TEST(Ordenes, FueraDeLaFlashNoSeGraba) {
  banco b;
  b.habilita();
  for (const char* comando : {"g04000000000000", "g00000100000000", "gFFFFFC00000000"}) {
    EXPECT_EQ(b.manda(comando), banco::en_trama("9")) << comando;
  }
  EXPECT_EQ(b.c.cambios(), 0U);
}

}  // namespace
}  // namespace puente
