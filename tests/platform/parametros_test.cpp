#include <gtest/gtest.h>

#include "platform/transporte.h"

namespace morvane {
namespace {

TEST(ParametrosLinea, Validos) {
  const std::pair<const char*, parametros_linea> casos[] = {
      {"57600n81", {57600, 'n', 8, 2}},      {"57600,N,8,1", {57600, 'n', 8, 2}}, {"28800e72", {28800, 'e', 7, 4}},
      {"9600, o, 7, 1,", {9600, 'o', 7, 2}}, {" 50,m,,5,1.5 ", {50, 'm', 5, 3}},  {"4000000S82", {4000000, 's', 8, 4}},
  };
  for (const auto& [texto, linea] : casos) EXPECT_EQ(leer_parametros(texto), linea) << texto;
}

TEST(ParametrosLinea, Absurdos) {
  for (const char* texto : {"",          ",",          "n81",        "57600",          "57600n",
                            "57600n8",   "57600x81",   "57600n91",   "57600n41",       "57600n80",
                            "57600n83",  "57600n811",  "57600n81x",  "57600n81.5",     "57600n52",
                            "-57600n81", "+57600n81",  "49n81",      "4000001n81",     "99999999999n81",
                            "57 600n81", "57600.0n81", "57600\tn81", "57600n8\xC2\xB9"}) {
    EXPECT_FALSE(leer_parametros(texto).has_value()) << texto;
  }
}

}  // namespace
}  // namespace morvane
