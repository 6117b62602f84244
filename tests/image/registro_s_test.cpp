#include "mundo_carga.h"

namespace morvane {
namespace {

TEST(registro_s, stores_what_the_length_of_the_line_says) {
  const struct {
    const char* linea;
    int dir;
    bytes datos;
  } casos[] = {
      {"S1061000AABBCCB8", 0x1000, {0xAA, 0xBB, 0xCC, 0xFF}},  // filled up to four bytes
      {"S2050200000900", 0x20000, {9, 0xFF, 0xFF, 0xFF}},
      {"S2080200001234567804", 0x20000, {0x12, 0x34, 0x56, 0x78}},  // a whole group stays as it is
      {"S30A0003100011223344550A", 0x31000, {0x11, 0x22, 0x33, 0x44, 0x55, 0xFF, 0xFF, 0xFF}},
      {"S1FF1abcaaBBCc00", 0x1ABC, {0xAA, 0xBB, 0xCC, 0xFF}},   // wrong count and checksum, lower case
      {"S1061000AABBCCB8 ", 0x1000, {0xAA, 0xBB, 0xCC, 0xBF}},  // a blank makes checksum into data
      {"S1061000ABC00", 0x1000, {0xAB, 0xCF, 0xFF, 0xFF}},      // odd number of digits
      {"S10610005G.5 9::00", 0x1000, {5, 0, 0, 0}},             // a pair counts up to its first non-digit
      {"S1061000\xC3\xB1\x31\xF1xx00", 0x1000, {0, 1, 0, 0xFF}},
      {"S20803FFFE0102030400", 0x3FFFE, {1, 2, 3, 4}},  // up to the last cell
      {"S1030000FC", 0, {}},
      {"S30500040003FF", 0, {}},  // no data, so no address out of range
  };
  for (const auto& [linea, dir, datos] : casos) {
    SCOPED_TRACE(linea);
    const auto cuantos = static_cast<int>(datos.size());
    mundo_carga m;
    EXPECT_EQ(m.registro(linea), std::nullopt);
    EXPECT_EQ(m.celdas(dir, datos.size()), datos);
    EXPECT_EQ(m.marcas(), cuantos);
    EXPECT_EQ(m.marcas(dir, dir + cuantos), cuantos);
    EXPECT_EQ(m.v.dir_max, cuantos == 0 ? 0 : dir + cuantos - 1);
  }
}

TEST(registro_s, a_later_record_wins_also_over_filling) {
  mundo_carga m;
  for (const char* linea : {"S1061000AABBCC00", "S1041003DD00", "S1040FFF1100"}) m.registro(linea);
  EXPECT_EQ(m.celdas(0xFFF, 8), (bytes{0x11, 0xFF, 0xFF, 0xFF, 0xDD, 0xFF, 0xFF, 0xFF}));
  EXPECT_EQ(m.v.dir_max, 0x1006);
}

TEST(registro_s, the_configuration_field_is_zero_after_any_record) {
  const std::string cifras(72, '5');
  for (const auto& [linea, fuera, marcas] :
       {std::tuple{std::string("S1033000CC"), 0xFF, 0}, std::tuple{"S12703FE" + cifras + "00", 0x55, 36}}) {
    mundo_carga m;
    m.registro(linea);
    bytes campo(34, 0);
    campo.front() = campo.back() = static_cast<std::uint8_t>(fuera);
    EXPECT_EQ(m.celdas(0x3FF, 34), campo);
    EXPECT_EQ(m.marcas(), marcas);
  }
}

}  // namespace
}  // namespace morvane
