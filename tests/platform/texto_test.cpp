#include "platform/texto.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/transporte.h"

namespace morvane {
namespace {

TEST(Texto, CadaCaracterSaleEnteroYCadaByteSuelto) {
  const std::vector<std::string> casos[] = {
      {"a", "ñ", "€", "😀", "\xED\x9F\xBF", "\xEE\x80\x80", "\xF4\x8F\xBF\xBF", "\xFF"},
      // cut off, overlong, no code points
      {"\xE2", "\x82", "x", "\xF0", "\x9F", "\x98"},
      {"\xC1", "\xBF", "\xE0", "\x9F", "\xBF", "x", "\xF0", "\x8F", "\xBF", "\xBF"},
      {"\xED", "\xA0", "\x80", "\xF4", "\x90", "\x80", "\x80"},
  };
  for (const auto& caracteres : casos) {
    std::string texto;
    for (const std::string& c : caracteres) texto += c;
    EXPECT_EQ(longitud(texto), caracteres.size()) << texto;
    for (std::size_t i = 0; i < caracteres.size(); ++i) EXPECT_EQ(trozo(texto, i + 1, 1), caracteres[i]) << texto;
  }
}

TEST(Texto, LoQueNoEsUtf8SeLeeComoLaPaginaDeWindows) {
  EXPECT_EQ(en_utf8("C:\\Niño"), "C:\\Niño");
  EXPECT_EQ(en_utf8("ñ\xF1\xE1\xC9\xDC\xBF\xBA\xFF"), "Ã±ñáÉÜ¿ºÿ");
  EXPECT_EQ(en_utf8("\x80\x81\x85\x8C\x92\x96\x99\x9F"), "€\xC2\x81…Œ’–™Ÿ");
}

TEST(ParametrosLinea, LosAbsurdosNoPasanPorValidos) {
  const std::pair<const char*, parametros_linea> validos[] = {
      {"28800e72", {28800, 'e', 7, 4}}, {" 50,m,,5,1.5 ", {50, 'm', 5, 3}}, {"4000000S81", {4000000, 's', 8, 2}}};
  for (const auto& [texto, linea] : validos) EXPECT_EQ(leer_parametros(texto), linea) << texto;
  for (const char* texto : {"", "n81", "57600", "57600n", "57600n8", "57600x81", "57600n91", "57600n41", "57600n83",
                            "57600n811", "57600n81.5", "57600n52", "-57600n81", "49n81", "4000001n81", "57 600n81"}) {
    EXPECT_EQ(leer_parametros(texto), std::nullopt) << texto;
  }
}

}  // namespace
}  // namespace morvane
