#include "image/busqueda.h"

#include <gtest/gtest.h>

#include "image/filas.h"

using namespace morvane;

namespace {

std::vector<std::uint8_t> bytes_de(std::string_view texto) {
  return {texto.begin(), texto.end()};
}

TEST(busqueda, bytes_are_pairs_of_digits_with_or_without_blanks) {
  EXPECT_EQ(patron_de_bytes(" 4e  75FF 0A").value().bytes, bytes_de("\x4E\x75\xFF\n"));
  for (const char* malo : {"4", "4 E", "4G", "4E-75"}) EXPECT_FALSE(patron_de_bytes(malo)) << malo;
}

TEST(busqueda, the_nearest_place_in_each_direction_and_round_the_ends) {
  const auto donde = bytes_de("abcABCabab");
  const patron ab{bytes_de("ab")}, aba{bytes_de("aba")}, texto = patron_de_texto("aB");
  constexpr auto adelante = sentido::adelante, atras = sentido::atras;
  const std::tuple<patron, std::size_t, sentido, std::size_t, bool> casos[] = {
      {ab, 1, adelante, 6, false}, {ab, 8, adelante, 8, false}, {ab, 99, adelante, 0, true},
      {ab, 8, atras, 6, false},    {ab, 9, atras, 8, false},    {ab, 0, atras, 8, true},
      {aba, 7, atras, 6, false},   {aba, 6, atras, 6, true},    {texto, 1, adelante, 3, false}};
  for (const auto& [que, desde, hacia, dir, vuelta] : casos) {
    const auto h = buscar(donde, que, desde, hacia);
    ASSERT_TRUE(h);
    EXPECT_EQ(h->dir, dir) << desde << ": " << h->dir << h->vuelta;
    EXPECT_EQ(h->vuelta, vuelta) << desde << ": " << h->dir << h->vuelta;
    EXPECT_FALSE(buscar(donde, {bytes_de("abcABCababc")}, desde, hacia)) << "longer than the whole";
  }
}

/// The characters of a row that stand out, the others as blanks.
std::string realzado(const filas& lista) {
  const std::string texto = lista.texto(0);
  std::string visto(texto.size(), ' ');
  for (const parte_realzada& una : lista.realces(0))
    visto.replace(una.desde, una.cuantos, texto, una.desde, una.cuantos);
  return visto;
}

TEST(filas, erased_bytes_found_ones_and_digits_that_differ_stand_out) {
  std::vector<std::uint8_t> bytes(16 * 2 + 5, 0xFF);
  bytes[1] = 0x0F;
  bytes[14] = bytes[15] = 'A';
  EXPECT_EQ(realzado(volcado(bytes)), "        FF    FF FF FF FF FF FF FF FF FF FF FF FF        . ............  ");
  const parte_realzada cifras{8, 5, realce::hallado}, caracteres{57, 2, realce::hallado};
  EXPECT_EQ(partes_en_fila({0x1E, 0x22}, 2, realce::hallado), (std::vector{cifras, caracteres}))
      << "the end of two rows";
  EXPECT_TRUE(partes_en_fila({0x1E, 0x22}, 3, realce::hallado).empty());
  const std::tuple<std::uint8_t, std::uint8_t, const char*> casos[] = {{0x12, 0x34, "           12   34"},
                                                                       {0x12, 0x14, "            2    4"},
                                                                       {0x12, 0x32, "           1    3 "},
                                                                       {0x0A, 0xFA, "               F "}};
  Variables_grab v;
  for (const auto& [entrada, salida, distinto] : casos) {
    v.buffer_entrada[0] = entrada;
    v.buffer_salida[0] = salida;
    EXPECT_EQ(realzado(*filas_de_comparacion(v, 0)), distinto);
  }
}

}  // namespace
