#include "platform/texto.h"

#include <gtest/gtest.h>

#include <vector>

namespace morvane {
namespace {

TEST(Texto, HexSeRellenaPeroNoSeCorta) {
  struct caso {
    std::uint32_t valor;
    std::size_t ancho;
    const char* texto;
  };
  for (const caso& c : {caso{0, 1, "0"}, caso{0, 0, "0"}, caso{0xA, 2, "0A"}, caso{0x3FFFF, 6, "03FFFF"},
                        caso{0xFFFFFFFF, 2, "FFFFFFFF"}, caso{1, 10, "0000000001"}}) {
    EXPECT_EQ(hex(c.valor, c.ancho), c.texto);
    std::string cola = "x";
    anadir_hex(cola, c.valor, c.ancho);
    EXPECT_EQ(cola, std::string("x") + c.texto);
  }
}

TEST(Texto, ValorHexAcabaEnElPrimerCaracterAjeno) {
  struct caso {
    const char* texto;
    std::uint32_t valor;
  };
  for (const caso& c :
       {caso{"", 0}, caso{"g1", 0}, caso{"1g", 1}, caso{"fF", 0xFF}, caso{"12345678", 0x12345678}, caso{" 1", 0},
        caso{"A12345678", 0x12345678}, caso{"00000000000000FF", 0xFF}, caso{"-1", 0}, caso{"0x10", 0}}) {
    EXPECT_EQ(valor_hex(c.texto), c.valor) << c.texto;
  }
  for (const char ajeno : {'/', ':', '@', 'G', '`', 'g', '\0', '\xC3'}) EXPECT_EQ(digito_hex(ajeno), -1);
}

TEST(Texto, MayusculasDejaLoQueNoEsAscii) {
  EXPECT_EQ(mayusculas("com1 ñandú {`z"), "COM1 ñANDú {`Z");
  EXPECT_EQ(sin_blancos("  a b  "), "a b");
  EXPECT_EQ(sin_blancos("   "), "");
}

struct caso_utf8 {
  std::string_view texto;
  std::vector<std::string_view> caracteres;
};

const std::vector<caso_utf8>& casos_utf8() {
  static const std::vector<caso_utf8> casos = {
      {"", {}},
      {"añ€😀z", {"a", "ñ", "€", "😀", "z"}},
      {std::string_view("ñ").substr(0, 1), {"\xC3"}},                  // cut off
      {"\xE2\x82x", {"\xE2", "\x82", "x"}},                            // cut off in mid-text
      {"\xF0\x9F\x98", {"\xF0", "\x9F", "\x98"}},                      // cut off before the last byte
      {"\xC0\xAF\xC1\xBF", {"\xC0", "\xAF", "\xC1", "\xBF"}},          // overlong, two bytes
      {"\xE0\x9F\xBF", {"\xE0", "\x9F", "\xBF"}},                      // overlong, three bytes
      {"\xF0\x8F\xBF\xBF", {"\xF0", "\x8F", "\xBF", "\xBF"}},          // overlong, four bytes
      {"\xED\xA0\x80", {"\xED", "\xA0", "\x80"}},                      // surrogate
      {"\xF4\x90\x80\x80", {"\xF4", "\x90", "\x80", "\x80"}},          // beyond the last code point
      {"\xF4\x8F\xBF\xBF\xFF", {"\xF4\x8F\xBF\xBF", "\xFF"}},          // the last one
      {"\xED\x9F\xBF\xEE\x80\x80", {"\xED\x9F\xBF", "\xEE\x80\x80"}},  // beside the surrogates
  };
  return casos;
}

TEST(Texto, CadaCaracterSaleEnteroYCadaByteSuelto) {
  for (const caso_utf8& c : casos_utf8()) {
    EXPECT_EQ(longitud(c.texto), c.caracteres.size());
    std::string juntos;
    for (std::size_t i = 0; i < c.caracteres.size(); ++i) {
      EXPECT_EQ(trozo(c.texto, i + 1, 1), c.caracteres[i]);
      juntos += trozo(c.texto, i + 1, 1);
    }
    EXPECT_EQ(juntos, c.texto);
  }
}

TEST(Texto, TrozoFueraDelTexto) {
  EXPECT_EQ(trozo("añb", 2, 100), "ñb");
  EXPECT_EQ(trozo("añb", 2, std::string_view::npos), "ñb");
  EXPECT_EQ(trozo("añb", 4, 1), "");
  EXPECT_EQ(trozo("añb", 1, 0), "");
}

}  // namespace
}  // namespace morvane
