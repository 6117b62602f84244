#include "serial/mscomm.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "platform/gemelo.h"
#include "serial/transporte_memoria.h"

namespace morvane {
namespace {

TEST(ParametrosLinea, LosAbsurdosNoPasanPorValidos) {
  const std::pair<const char*, parametros_linea> validos[] = {
      {"28800e72", {28800, 'e', 7, 4}}, {" 50,m,,5,1.5 ", {50, 'm', 5, 3}}, {"4000000S81", {4000000, 's', 8, 2}}};
  for (const auto& [texto, linea] : validos) EXPECT_EQ(leer_parametros(texto), linea) << texto;
  for (const char* texto : {"", "n81", "57600", "57600n", "57600n8", "57600x81", "57600n91", "57600n41", "57600n83",
                            "57600n811", "57600n81.5", "57600n52", "-57600n81", "49n81", "4000001n81", "57 600n81"}) {
    EXPECT_EQ(leer_parametros(texto), std::nullopt) << texto;
  }
}

/// A far end that sends what it is given, all at once.
struct emisor final : extremo {
  void recibir(std::string_view /*datos*/, instante /*ahora*/) override {}
  std::string entregar(std::size_t cuantos, instante /*ahora*/) override {
    std::string estos = cola.substr(0, cuantos);
    cola.erase(0, cuantos);
    return estos;
  }
  std::optional<instante> proximo() const override { return std::nullopt; }
  std::string cola;
};

struct Control : testing::Test {
  Control() {
    EXPECT_TRUE(serial.PortOpen(true));
    serial.OnComm = [this] { llegadas.emplace_back(serial.Input()); };
  }
  /// What each event of one pass took.
  std::vector<std::string> pasada(const std::string& llega) {
    lejos.cola = llega;
    llegadas.clear();
    plat.DoEvents();
    return llegadas;
  }
  using textos = std::vector<std::string>;
  gemelo plat;
  emisor lejos;
  transporte_memoria linea{plat, lejos};
  MSComm serial{plat, linea};
  textos llegadas;
};

TEST_F(Control, ElUmbralDecideCuandoLlegaAlgoYElLargoCuanto) {
  serial.RThreshold(3);
  serial.InputLen(2);
  EXPECT_EQ(pasada("ab"), textos{});
  EXPECT_EQ(pasada("cde"), (textos{"ab", "cd"})) << "again for as long as the threshold is met";
  serial.InputLen(0);
  EXPECT_EQ(pasada("fghi"), textos{"efghi"});
  EXPECT_EQ(serial.recibidos(), 9U);
}

TEST_F(Control, EnModoCaracterUnaRespuestaSeEntregaEnteraYUnaLlenaTalCual) {
  EXPECT_EQ(pasada("\x02"
                   "020"),
            textos{});
  EXPECT_EQ(serial.pendientes(), 4U);
  EXPECT_EQ(pasada("\x03x"), (textos{"\x02", "0", "2", "0", "\x03"})) << "what stands behind the ETX is held back";
  EXPECT_FALSE(serial.desbordado());
  EXPECT_EQ(pasada(std::string(MSComm::InBufferSize - 1, 'y')).size(), MSComm::InBufferSize);
  EXPECT_TRUE(serial.desbordado());
  serial.descartar_entrada();
  EXPECT_FALSE(serial.desbordado());
}

TEST_F(Control, ConUnaCajaAbiertaNoLlegaNada) {
  serial.RThreshold(2);
  serial.InputLen(0);
  lejos.cola = "ab";
  plat.responder(vbYes, [this] {
    plat.DoEvents();
    EXPECT_EQ(llegadas, textos{});
  });
  EXPECT_EQ(plat.MsgBox({"", "?", botones::SiNo}), vbYes);
  plat.DoEvents();
  EXPECT_EQ(llegadas, textos{"ab"});
}

}  // namespace
}  // namespace morvane
