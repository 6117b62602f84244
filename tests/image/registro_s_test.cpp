#include "mundo_carga.h"
#include "platform/texto.h"

namespace morvane {
namespace {

using bytes = std::vector<std::uint8_t>;

std::optional<std::string> cargar(mundo_carga& m, std::string_view linea, int ancho_dir) {
  return cargar_registro_s(m.v, linea, linea.size(), static_cast<std::uint8_t>(ancho_dir));
}

TEST(registro_s, stores_what_the_length_of_the_line_says) {
  const struct {
    const char* que;
    const char* linea;
    int ancho_dir;
    int dir;
    bytes datos;
  } casos[] = {
      {"filled up to four bytes", "S1061000AABBCCB8", 4, 0x1000, {0xAA, 0xBB, 0xCC, 0xFF}},
      {"whole groups stay as they are", "S208020000010203040506070804", 6, 0x20000, {1, 2, 3, 4, 5, 6, 7, 8}},
      {"eight address digits", "S30900031000112233440A", 8, 0x31000, {0x11, 0x22, 0x33, 0x44}},
      {"wrong count, wrong checksum", "S1FF1000AABBCC00", 4, 0x1000, {0xAA, 0xBB, 0xCC, 0xFF}},
      {"a blank makes checksum into data", "S1061000AABBCCB8 ", 4, 0x1000, {0xAA, 0xBB, 0xCC, 0xBF}},
      {"odd number of digits", "S1061000ABC00", 4, 0x1000, {0xAB, 0xCF, 0xFF, 0xFF}},
      {"lower case", "S1061abcaabbccdd00", 4, 0x1ABC, {0xAA, 0xBB, 0xCC, 0xDD}},
      {"a pair counts up to its first non-digit", "S10610005G.5 9::00", 4, 0x1000, {5, 0, 0, 0}},
      {"bytes above 0x7F are no digits",
       "S1061000\xC3\xB1"
       "1\xF1"
       "0000",
       4,
       0x1000,
       {0, 1, 0, 0xFF}},
      {"up to the last cell", "S20803FFFE0102030400", 6, 0x3FFFE, {1, 2, 3, 4}},
      {"no data", "S1030000FC", 4, 0, {}},
      {"no data, so no address to be out of range", "S30500040003FF", 8, 0, {}},
  };
  for (const auto& caso : casos) {
    SCOPED_TRACE(caso.que);
    mundo_carga m;
    EXPECT_EQ(cargar(m, caso.linea, caso.ancho_dir), std::nullopt);
    const auto dir = static_cast<std::size_t>(caso.dir);
    EXPECT_EQ(m.celdas(dir, caso.datos.size()), caso.datos);
    EXPECT_EQ(m.marcas(), static_cast<long>(caso.datos.size()));
    for (std::size_t i = 0; i < caso.datos.size(); ++i) EXPECT_TRUE(m.marcada(dir + i));
    EXPECT_EQ(m.v.dir_max, caso.datos.empty() ? 0 : caso.dir + static_cast<int>(caso.datos.size()) - 1);
  }
}

TEST(registro_s, takes_all_lengths_up_to_124_bytes) {
  mundo_carga m;
  for (std::size_t n = 1; n <= 124; ++n) {
    SCOPED_TRACE(n);
    bytes esperados;
    std::string linea = "S1002000";
    for (std::size_t i = 0; i < n; ++i) {
      esperados.push_back(static_cast<std::uint8_t>(i * 7 + n));
      linea += hex(esperados.back(), 2);
    }
    while (esperados.size() % 4 != 0) esperados.push_back(0xFF);
    EXPECT_EQ(cargar(m, linea + "00", 4), std::nullopt);
    EXPECT_EQ(m.celdas(0x2000, esperados.size()), esperados);
    EXPECT_EQ(m.v.dir_max, 0x2000 + static_cast<int>(esperados.size()) - 1);
  }
}

TEST(registro_s, a_later_record_wins_also_over_filling) {
  mundo_carga m;
  cargar(m, "S1061000AABBCC00", 4);
  cargar(m, "S1041003DD00", 4);
  EXPECT_EQ(m.celdas(0x1000, 7), (bytes{0xAA, 0xBB, 0xCC, 0xDD, 0xFF, 0xFF, 0xFF}));
  cargar(m, "S1040FFF1100", 4);
  EXPECT_EQ(m.celdas(0xFFF, 5), (bytes{0x11, 0xFF, 0xFF, 0xFF, 0xDD}));
  EXPECT_EQ(m.v.dir_max, 0x1006);
}

TEST(registro_s, the_configuration_field_is_zero_after_any_record) {
  mundo_carga m;
  cargar(m, "S1033000CC", 4);
  bytes campo(34, 0);
  campo.front() = campo.back() = 0xFF;
  EXPECT_EQ(m.celdas(0x3FF, 34), campo);
  EXPECT_EQ(m.v.dir_max, 0);
  cargar(
      m,
      "S12703FE" +
          [] {
            std::string s;
            for (int i = 0; i < 36; ++i) s += "5A";
            return s;
          }() +
          "00",
      4);
  campo.front() = campo.back() = 0x5A;
  EXPECT_EQ(m.celdas(0x3FF, 34), campo);
  EXPECT_TRUE(m.marcada(0x400) && m.marcada(0x41F));
  EXPECT_EQ(m.v.dir_max, 0x421);
}

TEST(registro_s, a_refused_line_stores_nothing) {
  mundo_carga m;
  EXPECT_TRUE(cargar(m, "S20803FFFF0102030400", 6));
  EXPECT_TRUE(m.borrada());
  EXPECT_EQ(m.marcas(), 0);
  EXPECT_EQ(m.v.dir_max, 0);
}

}  // namespace
}  // namespace morvane
