#include <array>

#include "banco.h"

namespace puente {
namespace {

// Replies to a word to program, the fifth frame, and to its first byte read back.
TEST(Faltas, CadaUnaEnSuTrama) {
  const std::pair<faltas, std::array<std::string, 2>> casos[] = {
      {{}, {"<030>", "<0ABB3>"}},
      {{.muda_desde = 5}, {"", ""}},
      {{.calla_en = 5}, {"", "<0ABB3>"}},
      {{.cortada_en = 5, .cortada_tras = 3}, {"<03", "<0ABB3>"}},
      {{.suma_mala_en = 5}, {"<031>", "<0ABB3>"}},
      {{.suma_minuscula_en = 6}, {"<030>", "<0ABb3>"}},
      {{.error_en = 5, .codigo_error = 'X'}, {"<X58>", "<0FFBC>"}},
      {{.reset_en = 5}, {"<1RESETB4>", "<737>"}},
      {{.reset_en = 5, .reset_repetido = 2}, {"<1RESETB4><1RESETB4>", "<737>"}},
      {{.por_mil_sin_grabar = 1000}, {"<030>", "<0FFBC>"}},
      {{.cuelga_en = 5}, {"", ""}},
  };
  for (const auto& [f, respuestas] : casos) {
    SCOPED_TRACE(respuestas[0] + respuestas[1]);
    banco b(f);
    b.recorre("A a d2E a");
    EXPECT_EQ(b.manda("g000000AB000000"), hilo(respuestas[0]));
    EXPECT_EQ(b.manda("e00000001"), hilo(respuestas[1]));
    EXPECT_EQ(b.c.flash()[0], respuestas[1].starts_with("<0AB") ? 0xAB : 0xFF);
    EXPECT_EQ(b.p.colgada(), f.cuelga_en != 0);
  }
}

TEST(Faltas, RetrasoYOrdenDeLasRespuestas) {
  banco b({.retrasada_en = 1, .retraso_ms = 1500});
  EXPECT_EQ(b.manda("A"), "");
  b.ahora = std::chrono::seconds{1};
  EXPECT_EQ(b.manda("c"), "") << "a later reply does not overtake";
  EXPECT_EQ(b.p.proximo(), instante{1'500'000});
  b.ahora = instante{1'500'000};
  EXPECT_EQ(b.p.sale(b.ahora), hilo("<030><00090>"));
  EXPECT_EQ(b.manda("D"), bien) << "only that reply was late";
  b.p.fallos.retrasa_todas = true;
  EXPECT_EQ(b.manda("c"), "");
}

TEST(Faltas, Goteo) {
  banco b({.goteo_ms = 10});
  EXPECT_EQ(b.manda("A"), "\x02");
  EXPECT_EQ(b.p.sale(instante{39'999}), "030");
  EXPECT_EQ(b.p.sale(instante{40'000}), "\x03");
}

TEST(Faltas, RuidoDeLaSemilla) {
  const auto ruidosa = [](std::uint64_t semilla) { return banco({.semilla = semilla, .ruido = 500}).manda("A"); };
  const std::string s = ruidosa(7);
  EXPECT_EQ(s.find_first_of("\x02\x03"), 500U);
  EXPECT_EQ(s.substr(500), bien);
  EXPECT_EQ(s, ruidosa(7));
  EXPECT_NE(s, ruidosa(8));
}

TEST(Faltas, ElBalbuceoVaPorElRelojYNoSeAcumula) {
  for (const bool con_etx : {false, true}) {
    banco b({.balbuceo_desde = 1, .balbuceo_etx = con_etx});
    EXPECT_EQ(b.manda("A"), "");
    EXPECT_FALSE(b.c.abierto());
    EXPECT_GT(b.p.proximo(), b.ahora) << "something is always still to come";
    const std::string s = b.p.sale(std::chrono::milliseconds{100});
    EXPECT_NEAR(static_cast<double>(s.size()), 1152, 12);
    EXPECT_EQ(s.find('\x02'), std::string::npos);
    EXPECT_EQ(s.find('\x03') != std::string::npos, con_etx);
    EXPECT_LE(b.p.sale(std::chrono::hours{1000}).size(), 5000U);
    b.p.vaciar();
    EXPECT_TRUE(b.p.proximo()) << "closing the line does not cure it";
  }
}

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
  b.p.entra(banco::en_trama("e00000020") + banco::en_trama("c"), instante{100});
  EXPECT_EQ(b.p.sale(std::chrono::seconds{2}).size(), 81U);
  // 5 + 13 characters there and 69 + 7 back, 173.6 µs each; the last command comes in while the board still answers.
  EXPECT_NEAR(static_cast<double>(cuando.count()), 94 * 173.611, 2);
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
