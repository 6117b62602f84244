#include "banco.h"

namespace puente {
namespace {

// 10,000 bits a second: a character takes 1 ms.
constexpr ritmo lento{10'000};

TEST(Ritmo, IdaYVueltaTardanLoSuyo) {
  banco b({}, lento);
  b.p.entra(banco::en_trama("A"), instante{500});
  EXPECT_EQ(b.p.proximo(), instante{1500});
  EXPECT_EQ(b.p.sale(instante{6499}), "");
  EXPECT_EQ(b.p.proximo(), instante{6500});
  EXPECT_EQ(b.p.sale(instante{6500}), "\x02");
  EXPECT_EQ(b.p.sale(instante{9499}, 1), "0");
  EXPECT_EQ(b.p.sale(instante{9499}), "3") << "what was left of what had arrived";
  EXPECT_EQ(b.p.sale(instante{10'500}), hilo("0>"));
  EXPECT_FALSE(b.p.proximo());
}

TEST(Ritmo, AVelocidadRealNiLasTramasNiElRedondeoSeAcumulan) {
  banco b({}, ritmo{57'600});
  instante cuando{0};
  b.p.traza = [&](char direccion, std::string_view, instante t) { cuando = direccion == '<' ? t : cuando; };
  b.p.entra(banco::en_trama("A"), instante{0});
  b.p.entra(banco::en_trama("e00000020"), instante{100});
  EXPECT_EQ(b.p.sale(std::chrono::seconds{2}).size(), 74U);
  // 5 + 13 characters there and 69 back, 173.6 µs each.
  EXPECT_NEAR(static_cast<double>(cuando.count()), 87 * 173.611, 2);
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
}

TEST(Ritmo, NadieLeeYLaMemoriaTieneTope) {
  banco b;
  b.manda("A");
  for (int i = 0; i < 5000; ++i) b.p.entra(banco::en_trama("e00000020"), b.ahora);
  EXPECT_EQ(b.p.tramas(), 5001U);
  EXPECT_EQ(b.p.sale(b.ahora).size(), placa::capacidad);
  EXPECT_EQ(b.manda("A"), bien) << "and the board answers again";
  banco paso({}, lento);
  paso.p.entra(std::string(3 * placa::capacidad, 'x'), instante{0});
  EXPECT_EQ(paso.p.hueco(), 0U);
}

}  // namespace
}  // namespace puente
