#include "platform/texto.h"

#include <gtest/gtest.h>

#include <vector>

#include "platform/transporte.h"

namespace morvane {
namespace {

TEST(Texto, Hexadecimal) {
  const std::tuple<std::uint32_t, std::size_t, const char*> escritos[] = {
      {0, 1, "0"},          {0, 0, "0"}, {0xA, 2, "0A"}, {0x3FFFF, 6, "03FFFF"}, {0xFFFFFFFF, 2, "FFFFFFFF"},
      {1, 10, "0000000001"}};
  for (const auto& [valor, ancho, texto] : escritos) EXPECT_EQ(hex(valor, ancho), texto);
  const std::pair<const char*, std::uint32_t> leidos[] = {
      {"", 0}, {"g1", 0}, {"1g", 1}, {"fF", 0xFF}, {" 1", 0}, {"0x10", 0}, {"A12345678", 0x12345678}};
  for (const auto& [texto, valor] : leidos) EXPECT_EQ(valor_hex(texto), valor) << texto;
  for (const char ajeno : {'/', ':', '@', 'G', '`', 'g', '\0', '\xC3'}) EXPECT_EQ(digito_hex(ajeno), -1);
}

TEST(Texto, MayusculasYBlancos) {
  EXPECT_EQ(mayusculas("com1 ñandú {`z"), "COM1 ñANDú {`Z");
  EXPECT_EQ(sin_blancos("  a b  "), "a b");
  EXPECT_EQ(sin_blancos("   "), "");
}

TEST(Texto, CadaCaracterSaleEnteroYCadaByteSuelto) {
  const std::vector<std::string> casos[] = {
      {"a", "ñ", "€", "😀", "z"},
      {"\xC3"},                          // cut off
      {"\xE2", "\x82", "x"},             // cut off in mid-text
      {"\xF0", "\x9F", "\x98"},          // cut off before the last byte
      {"\xC0", "\xAF", "\xC1", "\xBF"},  // overlong, two bytes
      {"\xE0", "\x9F", "\xBF"},          // overlong, three bytes
      {"\xF0", "\x8F", "\xBF", "\xBF"},  // overlong, four bytes
      {"\xED", "\xA0", "\x80"},          // surrogate
      {"\xF4", "\x90", "\x80", "\x80"},  // beyond the last code point
      {"\xF4\x8F\xBF\xBF", "\xFF"},      // the last one
      {"\xED\x9F\xBF", "\xEE\x80\x80"},  // beside the surrogates
  };
  for (const auto& caracteres : casos) {
    std::string texto;
    for (const std::string& c : caracteres) texto += c;
    EXPECT_EQ(longitud(texto), caracteres.size()) << texto;
    for (std::size_t i = 0; i < caracteres.size(); ++i) EXPECT_EQ(trozo(texto, i + 1, 1), caracteres[i]) << texto;
  }
  EXPECT_EQ(trozo("añb", 2, std::string_view::npos), "ñb");
  EXPECT_EQ(trozo("añb", 4, 1), "");
  EXPECT_EQ(trozo("añb", 1, 0), "");
}

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
