#include <gtest/gtest.h>

#include <random>

#include "banco.h"
#include "bridge/traza.h"

namespace puente {
namespace {

// 10,000 bits a second: a character takes 1 ms.
constexpr ritmo lento{10'000};

TEST(Ritmo, IdaYVueltaTardanLoSuyo) {
  banco b({}, lento);
  b.p.entra(banco::en_trama("A"), instante{500});
  EXPECT_EQ(b.p.proximo(), instante{1500});
  EXPECT_EQ(b.p.sale(instante{5499}), "");
  EXPECT_EQ(b.p.sale(instante{6499}), "");
  EXPECT_EQ(b.p.proximo(), instante{6500});
  EXPECT_EQ(b.p.sale(instante{6500}), "\x02");
  EXPECT_EQ(b.p.sale(instante{9499}, 1), "0");
  EXPECT_EQ(b.p.sale(instante{9499}), "3") << "what was left of what had arrived";
  EXPECT_EQ(b.p.sale(instante{10'500}), hilo("0>"));
  EXPECT_FALSE(b.p.proximo());
}

TEST(Ritmo, ElPlanNoDependeDeCuandoSeMire) {
  banco b({}, lento);
  b.p.entra(banco::en_trama("A"), instante{0});
  b.p.entra(banco::en_trama("c"), instante{100});
  EXPECT_EQ(b.p.sale(instante{17'000}), bien + banco::en_trama("000"));
}

TEST(Ritmo, AVelocidadRealNoSeAcumulaElRedondeo) {
  banco b({}, ritmo{57'600});
  b.manda("A");
  instante cuando{0};
  b.p.traza = [&](char direccion, std::string_view, instante t) { cuando = direccion == '<' ? t : cuando; };
  b.ahora = std::chrono::seconds{1};
  b.manda("e00000020");
  b.p.sale(std::chrono::seconds{2});
  // 13 characters there and 69 back, 173.6 µs each.
  EXPECT_NEAR(static_cast<double>(cuando.count()), 1e6 + 82 * 173.611, 2);
}

TEST(Ritmo, CerrarLaLineaPierdeLoQueVaDeCamino) {
  banco b({}, lento);
  b.p.entra(hilo("<A4"), instante{0});
  b.p.sale(instante{4000});
  b.p.vaciar();
  b.p.entra(hilo("1>"), instante{5000});
  EXPECT_EQ(b.p.sale(instante{50'000}), "") << "the half frame went with the line";
  b.p.entra(banco::en_trama("A"), instante{50'000});
  b.p.sale(instante{57'000});
  b.p.vaciar();
  EXPECT_FALSE(b.p.proximo());
  EXPECT_EQ(b.p.sale(instante{90'000}), "");
}

TEST(Ritmo, NadieLeeYLaMemoriaTieneTope) {
  banco b;
  b.manda("A");
  const std::string orden = banco::en_trama("e00000020");
  for (int i = 0; i < 5000; ++i) b.p.entra(orden, b.ahora);
  EXPECT_EQ(b.p.tramas(), 5001U);
  EXPECT_EQ(b.p.sale(b.ahora).size(), placa::capacidad);
  EXPECT_EQ(b.manda("A"), bien) << "and the board answers again";
  banco paso({}, lento);
  paso.p.entra(std::string(3 * placa::capacidad, 'x'), instante{0});
  EXPECT_EQ(paso.p.hueco(), 0U);
  EXPECT_EQ(paso.p.sale(instante{0}), "");
}

TEST(Ritmo, CualquierEntradaDejaLaPlacaEnPie) {
  std::mt19937 azar(3);
  banco b;
  const std::string letras = hilo("<>AaCcdegijD0123456789ABCDEF\xFF");
  std::size_t respuestas = 0;
  for (int i = 0; i < 200'000; ++i) respuestas += b.crudo(std::string(1, letras[azar() % letras.size()])).size();
  EXPECT_GT(respuestas, 0U);
  b.crudo("\x03");
  EXPECT_EQ(b.manda("A"), bien);
}

TEST(Traza, RenglonLegible) {
  EXPECT_EQ(renglon_de_traza('>', hilo("<A41>"), instante{1'234'567}), "     1.234567 > <STX>A41<ETX>");
  EXPECT_EQ(renglon_de_traza('<', "\xFF\n ~", instante{9}), "     0.000009 < <FF><0A> ~");
}

}  // namespace
}  // namespace puente
