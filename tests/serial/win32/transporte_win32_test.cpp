#include "serial/transporte_win32.h"

#include <gtest/gtest.h>

#include <vector>

#include "serial/puertos.h"

namespace morvane {
namespace {

// Lines that are there are tried by the tests in tests/com, with a board at the far end.
TEST(TransporteWin32, UnPuertoQueNoHayDiceElMotivoUnaVezYUnaLineaCerradaNoHaceNada) {
  transporte_win32 linea("");
  std::vector<causa_puerto> dichos;
  linea.al_fallar = [&](const causa_puerto& una) { dichos.push_back(una); };
  EXPECT_FALSE(linea.abrir(0, {}));
  EXPECT_TRUE(dichos == std::vector<causa_puerto>{{.cual = causa_puerto::clase::no_existe}});
  EXPECT_TRUE(describir_puerto("", 0).falta == dichos.front());
  std::array<char, 4> trozo{};
  linea.escribir("x");
  EXPECT_EQ(linea.leer(trozo), 0);
  EXPECT_FALSE(linea.perdido());
  EXPECT_TRUE(linea.dispositivo(0).empty());
  EXPECT_TRUE(enlazar_puerto("", 1, "COM7")) << "there are no links to change";
}

}  // namespace
}  // namespace morvane
