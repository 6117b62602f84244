#include "image/busqueda.h"

#include <gtest/gtest.h>

#include "image/filas.h"

using namespace morvane;

namespace {

std::vector<std::uint8_t> bytes_de(std::string_view texto) {
  return {texto.begin(), texto.end()};
}

TEST(busqueda, bytes_are_pairs_of_digits_with_or_without_blanks) {
  const std::pair<const char*, std::vector<std::uint8_t>> buenos[] = {
      {"4E75", {0x4E, 0x75}}, {" 4e  75 ", {0x4E, 0x75}}, {"00FF 0A", {0, 0xFF, 0x0A}}, {"", {}}, {"  ", {}}};
  for (const auto& [texto, bytes] : buenos) {
    ASSERT_TRUE(patron_de_bytes(texto)) << texto;
    EXPECT_EQ(patron_de_bytes(texto)->bytes, bytes) << texto;
  }
  for (const char* malo : {"4", "4E7", "4 E", "4G", "4E-75", "0x4E"}) EXPECT_FALSE(patron_de_bytes(malo)) << malo;
}

TEST(busqueda, the_nearest_place_in_each_direction_and_round_the_ends) {
  const auto donde = bytes_de("abcABCabab");
  const auto ab = bytes_de("ab"), aba = bytes_de("aba");
  const struct {
    patron que;
    std::size_t desde;
    sentido hacia;
    std::size_t dir;
    bool vuelta;
  } casos[] = {
      {{ab}, 0, sentido::adelante, 0, false},
      {{ab}, 1, sentido::adelante, 6, false},
      {{ab}, 8, sentido::adelante, 8, false},
      {{ab}, 9, sentido::adelante, 0, true},
      {{ab}, 99, sentido::adelante, 0, true},
      {{ab}, 8, sentido::atras, 6, false},
      {{ab}, 9, sentido::atras, 8, false},
      {{ab}, 0, sentido::atras, 8, true},
      {{ab}, 99, sentido::atras, 8, false},
      {{aba}, 7, sentido::atras, 6, false},
      {{aba}, 6, sentido::atras, 6, true},
      {{ab, true}, 1, sentido::adelante, 3, false},
      {patron_de_texto("bCa"), 0, sentido::adelante, 1, false},
      {patron_de_texto("cAbA"), 0, sentido::adelante, 5, false},
  };
  for (const auto& c : casos) {
    const auto h = buscar(donde, c.que, c.desde, c.hacia);
    ASSERT_TRUE(h);
    EXPECT_TRUE(h->dir == c.dir && h->vuelta == c.vuelta) << c.desde << ": " << h->dir << h->vuelta;
  }
  for (const sentido hacia : {sentido::adelante, sentido::atras}) {
    EXPECT_FALSE(buscar(donde, {bytes_de("aC")}, 4, hacia));
    EXPECT_FALSE(buscar(donde, {bytes_de("abcABCababc")}, 4, hacia)) << "longer than the whole";
    EXPECT_FALSE(buscar({}, {ab}, 0, hacia));
  }
}

/// The characters of a row that stand out, the others as blanks.
std::string realzado(const filas& lista, std::size_t fila) {
  const std::string texto = lista.texto(fila);
  std::string visto(texto.size(), ' ');
  for (const parte_realzada& una : lista.realces(fila)) {
    visto.replace(una.desde, una.cuantos, texto, una.desde, una.cuantos);
  }
  return visto;
}

TEST(filas, erased_bytes_step_back_as_digits_and_as_characters) {
  std::vector<std::uint8_t> bytes(16 * 3 + 5, 0xFF);
  bytes[1] = 0x0F;
  bytes[14] = bytes[15] = 'A';
  std::fill(bytes.begin() + 16, bytes.begin() + 32, std::uint8_t{0xF0});
  const volcado v(bytes);
  EXPECT_EQ(v.bytes().size(), 48u) << "what is not shown is not looked through";
  EXPECT_EQ(realzado(v, 0), "        FF    FF FF FF FF FF FF FF FF FF FF FF FF        . ............  ");
  EXPECT_EQ(realzado(v, 1), std::string(73, ' '));
  EXPECT_EQ(v.realces(2).size(), 2u);
  EXPECT_EQ(v.realces(2)[1], (parte_realzada{57, 16, realce::tenue}));
}

TEST(filas, bytes_that_go_over_the_end_of_a_row_stand_in_two) {
  const trecho cual{0x1E, 4};
  EXPECT_EQ(partes_en_fila(cual, 1, realce::hallado),
            (std::vector<parte_realzada>{{50, 5, realce::hallado}, {71, 2, realce::hallado}}));
  EXPECT_EQ(partes_en_fila(cual, 2, realce::hallado),
            (std::vector<parte_realzada>{{8, 5, realce::hallado}, {57, 2, realce::hallado}}));
  EXPECT_TRUE(partes_en_fila(cual, 0, realce::hallado).empty() && partes_en_fila(cual, 3, realce::hallado).empty());
}

TEST(filas, the_digits_that_differ_stand_out_in_a_comparison) {
  const struct {
    std::uint8_t entrada, salida;
    const char *fila, *distinto;
  } casos[] = {
      {0x12, 0x34, "     0     12   34", "           12   34"},
      {0x12, 0x14, "     0     12   14", "            2    4"},
      {0x12, 0x32, "     0     12   32", "           1    3 "},
      {0x0A, 0xFF, "     0     A   FF", "           A   FF"},
      {0x0A, 0xFA, "     0     A   FA", "               F "},
      {0x1A, 0x0B, "     0     1A   B", "           1A   B"},
      {0x00, 0x01, "     0     0   1", "           0   1"},
  };
  Variables_grab v;
  for (const auto& c : casos) {
    v.buffer_entrada[0] = c.entrada;
    v.buffer_salida[0] = c.salida;
    const auto lista = filas_de_comparacion(v, 0);
    EXPECT_EQ(lista->texto(0), c.fila);
    EXPECT_EQ(realzado(*lista, 0), c.distinto);
  }
}

}  // namespace
