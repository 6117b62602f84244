#include <gtest/gtest.h>

#include "platform/transporte.h"

namespace morvane {
namespace {

TEST(ParametrosLinea, Validos) {
  struct caso {
    const char* texto;
    parametros_linea linea;
  };
  for (const caso& c : {caso{"57600n81", {57600, 'n', 8, 2}}, caso{"57600,N,8,1", {57600, 'n', 8, 2}},
                        caso{"28800e72", {28800, 'e', 7, 4}}, caso{"110n81", {110, 'n', 8, 2}},
                        caso{"9600, o, 7, 1,", {9600, 'o', 7, 2}}, caso{" 50,m,,5,1.5 ", {50, 'm', 5, 3}},
                        caso{"4000000S82", {4000000, 's', 8, 4}}, caso{"0000115200n81", {115200, 'n', 8, 2}}}) {
    const auto leido = leer_parametros(c.texto);
    ASSERT_TRUE(leido.has_value()) << c.texto;
    EXPECT_EQ(*leido, c.linea) << c.texto;
  }
}

TEST(ParametrosLinea, Absurdos) {
  for (const char* texto :
       {"",          ",",          "n81",       "57600",      "57600n",         "57600n8",    "57600x81",
        "57600n91",  "57600n41",   "57600n80",  "57600n83",   "57600n811",      "57600n81x",  "57600n81.5",
        "57600n52",  "57600n51,5", "-57600n81", "+57600n81",  "49n81",          "4000001n81", "99999999999n81",
        "57 600n81", "57600.0n81", "0xE100n81", "57600\tn81", "57600n8\xC2\xB9"}) {
    EXPECT_FALSE(leer_parametros(texto).has_value()) << texto;
  }
}

}  // namespace
}  // namespace morvane
