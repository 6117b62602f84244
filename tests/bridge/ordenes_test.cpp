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

}  // namespace
}  // namespace puente
