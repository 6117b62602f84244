#include "files/texto.h"

#include <gtest/gtest.h>

#include <vector>

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

}  // namespace
}  // namespace morvane
