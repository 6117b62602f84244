#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>

#include "banco.h"

namespace puente {
namespace {

const std::string estado_cero = banco::en_trama("000");

struct caso {
  const char* que;
  std::function<void(faltas&)> pon;
  /// Replies to "A", "c" and "c".
  std::array<const char*, 3> respuestas;
};

const caso casos[] = {
    {"none", [](faltas&) {}, {"<030>", "<00090>", "<00090>"}},
    {"silent from", [](faltas& f) { f.muda_desde = 2; }, {"<030>", "", ""}},
    {"silent once", [](faltas& f) { f.calla_en = 2; }, {"<030>", "", "<00090>"}},
    {"cut", [](faltas& f) { f.cortada_en = 2, f.cortada_tras = 3; }, {"<030>", "<00", "<00090>"}},
    {"cut to nothing", [](faltas& f) { f.cortada_en = 2; }, {"<030>", "", "<00090>"}},
    {"wrong checksum", [](faltas& f) { f.suma_mala_en = 2; }, {"<030>", "<00091>", "<00090>"}},
    {"error code", [](faltas& f) { f.error_en = 2, f.codigo_error = 'X'; }, {"<030>", "<X58>", "<00090>"}},
    {"reset", [](faltas& f) { f.reset_en = 2; }, {"<030>", "<1RESETB4>", "<737>"}},
    {"two resets", [](faltas& f) { f.reset_en = 2, f.reset_repetido = 2; }, {"<030>", "<1RESETB4><1RESETB4>", "<737>"}},
    {"hang-up", [](faltas& f) { f.cuelga_en = 2; }, {"<030>", "", ""}},
};

TEST(Faltas, CadaUnaEnSuTrama) {
  for (const caso& x : casos) {
    faltas f;
    x.pon(f);
    banco b(f);
    const char* comandos[] = {"A", "c", "c"};
    for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(b.manda(comandos[i]), hilo(x.respuestas[i])) << x.que << ' ' << i;
  }
}

TEST(Faltas, SumaEnMinusculas) {
  faltas f;
  f.suma_minuscula_en = 2;
  banco b(f);
  b.manda("A");
  EXPECT_EQ(b.manda("e00000301"), hilo("<0FFbc>"));
  EXPECT_EQ(b.manda("e00000301"), hilo("<0FFBC>"));
}

TEST(Faltas, CallaPeroObedeceYMudaNoObedece) {
  faltas f;
  f.calla_en = 5;
  f.muda_desde = 7;
  banco b(f);
  b.habilita();
  EXPECT_EQ(b.manda("g0000001234ABCD"), "");
  EXPECT_EQ(b.c.flash()[0], 0x12);
  b.prepara({"a", "g000004000000FF"});
  EXPECT_EQ(b.c.flash()[4], 0xFF);
}

TEST(Faltas, UnErrorOUnResetNoEjecutanLaOrden) {
  for (const bool reset : {false, true}) {
    faltas f;
    (reset ? f.reset_en : f.error_en) = 5;
    banco b(f);
    b.habilita();
    b.manda("g00000000000000");
    EXPECT_EQ(b.c.flash()[0], 0xFF);
    EXPECT_EQ(b.c.abierto(), !reset);
  }
}

TEST(Faltas, RetrasoYOrdenDeLasRespuestas) {
  faltas f;
  f.retrasada_en = 1;
  f.retraso_ms = 1500;
  banco b(f);
  EXPECT_EQ(b.manda("A"), "");
  b.ahora = std::chrono::seconds{1};
  EXPECT_EQ(b.manda("c"), "") << "a later reply does not overtake";
  EXPECT_EQ(b.p.proximo(), instante{1'500'000});
  b.ahora = instante{1'500'000};
  EXPECT_EQ(b.p.sale(b.ahora), bien + estado_cero);
  EXPECT_EQ(b.manda("c"), estado_cero) << "only that reply was late";
  b.p.fallos.retrasa_todas = true;
  EXPECT_EQ(b.manda("c"), "");
}

TEST(Faltas, Goteo) {
  faltas f;
  f.goteo_ms = 10;
  banco b(f);
  EXPECT_EQ(b.manda("A"), "\x02");
  b.ahora = instante{39'999};
  EXPECT_EQ(b.p.sale(b.ahora), "030");
  b.ahora = instante{40'000};
  EXPECT_EQ(b.p.sale(b.ahora), "\x03");
}

TEST(Faltas, RuidoDeLaSemilla) {
  const auto con = [](std::uint64_t semilla) {
    faltas f;
    f.semilla = semilla;
    f.ruido = 500;
    banco b(f);
    return b.manda("A");
  };
  const std::string s = con(7), ruido = s.substr(0, 500);
  EXPECT_EQ(s.substr(500), bien);
  EXPECT_EQ(ruido.find_first_of("\x02\x03"), std::string::npos);
  EXPECT_EQ(s, con(7));
  EXPECT_NE(s, con(8));
}

TEST(Faltas, PalabrasConfirmadasSinGrabar) {
  faltas f;
  f.por_mil_sin_grabar = 250;
  banco b(f);
  b.habilita();
  for (int i = 0; i < 4000; ++i) {
    char comando[16];
    std::snprintf(comando, sizeof comando, "g%06X00000000", 4 * i);
    b.manda("a");
    ASSERT_EQ(b.manda(comando), bien);
  }
  const auto sin_grabar = std::ranges::count(b.c.flash().first(16'000), 0xFF) / 4;
  EXPECT_GT(sin_grabar, 800);
  EXPECT_LT(sin_grabar, 1200);
}

TEST(Faltas, ElBalbuceoVaPorElRelojYNoSeAcumula) {
  for (const bool con_etx : {false, true}) {
    faltas f;
    f.balbuceo_desde = 2;
    f.balbuceo_etx = con_etx;
    banco b(f);
    b.manda("A");
    EXPECT_EQ(b.manda("i"), "");
    ASSERT_TRUE(b.p.proximo());
    EXPECT_GT(*b.p.proximo(), b.ahora) << "something is always still to come";
    b.ahora = std::chrono::milliseconds{100};
    const std::string s = b.p.sale(b.ahora);
    EXPECT_NEAR(static_cast<double>(s.size()), 1152, 12);
    EXPECT_EQ(s.find('\x02'), std::string::npos);
    EXPECT_EQ(s.find('\x03') != std::string::npos, con_etx);
    b.ahora = std::chrono::hours{1000};
    EXPECT_LE(b.p.sale(b.ahora).size(), 5000U);
    b.p.vaciar();
    EXPECT_TRUE(b.p.proximo()) << "closing the line does not cure it";
  }
}

TEST(Faltas, LaLineaColgadaNoVuelve) {
  faltas f;
  f.cuelga_en = 1;
  banco b(f);
  b.manda("A");
  EXPECT_TRUE(b.p.colgada());
  EXPECT_FALSE(b.p.proximo());
  b.manda("A");
  EXPECT_EQ(b.p.tramas(), 1U);
}

}  // namespace
}  // namespace puente
