#include "platform/plataforma.h"

#include <gtest/gtest.h>

#include "platform/gemelo.h"

namespace morvane {
namespace {

using namespace std::chrono_literals;

TEST(Relojes, LosPeriodosPerdidosDanUnToqueYNingunoConUnaCajaAbierta) {
  gemelo plat;
  Timer cada(plat, 100ms);
  int toques = 0;
  cada.OnTimer = [&] { ++toques; };
  cada.Enabled(true);
  plat.pasar(450ms);
  plat.DoEvents();
  EXPECT_EQ(toques, 1);
  plat.responder(vbNo, [&] {
    plat.pasar(500ms);
    plat.DoEvents();
  });
  EXPECT_EQ(plat.MsgBox({"", "?", botones::SiNo}), vbNo);
  EXPECT_EQ(toques, 1);
  const instante cerrada = plat.ahora();
  EXPECT_EQ(cada.vence(), cerrada + 100ms) << "the time in a box is nobody's";
  plat.DoEvents();
  EXPECT_EQ(toques, 2);
  EXPECT_EQ(plat.ahora(), cerrada + 100ms) << "an empty pass jumps to what is due";
}

TEST(Relojes, UnoQueSeVaMientrasOtroTocaNoSeTocaMas) {
  gemelo plat;
  Timer primero(plat, 10ms);
  auto segundo = std::make_optional<Timer>(plat, 10ms);
  primero.OnTimer = [&] { segundo.reset(); };
  segundo->OnTimer = [] { FAIL(); };
  primero.Enabled(true);
  segundo->Enabled(true);
  plat.DoEvents();
  EXPECT_FALSE(segundo);
}

TEST(Gemelo, LoQueNuncaLlegaEsUnaEsperaColgadaYUnaPreguntaSinRespuestaUnFallo) {
  gemelo plat;
  EXPECT_THROW(for (;;) plat.DoEvents(), colgado);
  EXPECT_THROW(plat.MsgBox({"", "?", botones::SiNo}), caja_inesperada);
  EXPECT_EQ(plat.MsgBox({"", "."}), vbOK);
}

TEST(Propiedad, SoloUnValorDistintoCuentaComoCambio) {
  contador_cambios cambios;
  propiedad<int> una(cambios, 3);
  una = 3;
  EXPECT_EQ(cambios.valor(), 0U);
  una = 4;
  EXPECT_EQ(cambios.valor(), 1U);
}

}  // namespace
}  // namespace morvane
