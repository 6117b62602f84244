#include "serial/transporte_win32.h"

#include <gtest/gtest.h>

#include <vector>

#include "serial/puertos.h"

namespace morvane {
namespace {

// Lines that are there are tried by the tests in tests/com, with a board at the far end.
TEST(TransporteWin32, UnPuertoQueNoHayDiceElMotivoUnaVezYUnaLineaCerradaNoHaceNada) {
  transporte_win32 linea("");
  std::vector<std::string> dichos;
  linea.al_fallar = [&](const std::string& uno) { dichos.push_back(uno); };
  EXPECT_FALSE(linea.abrir(0, {}));
  EXPECT_EQ(dichos, std::vector<std::string>{"COM0: no existe en este equipo"});
  EXPECT_EQ(describir_puerto("", 0), dichos.front());
  std::array<char, 4> trozo{};
  linea.escribir("x");
  EXPECT_EQ(linea.leer(trozo), 0);
  EXPECT_FALSE(linea.perdido());
  EXPECT_TRUE(linea.dispositivo(0).empty());
  EXPECT_NE(enlazar_puerto("", 1, "COM7"), "") << "there are no links to change";
}

}  // namespace
}  // namespace morvane
