#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "apoyo/carpeta.h"
#include "image/cargar_bin.h"
#include "image/cargar_s19.h"
#include "platform/gemelo.h"

using namespace morvane;

namespace {

namespace fs = std::filesystem;
using bytes = std::vector<std::uint8_t>;

struct carga : testing::Test {
  void cargar_archivo(const std::string& ruta, bool binario) {
    limpiar_buffer_salida(v);
    plat.cajas.clear();
    plat.paciencia = total_celdas;
    v.dir_max = 7;
    v.ruta_archivo = ruta;
    fallo = binario ? cargar_bin(plat, v) : cargar_s19(plat, v, a);
  }
  void s19(const std::string& texto) { cargar_archivo(dir.escribir("f", texto), false); }
  void bin(const std::string& texto) { cargar_archivo(dir.escribir("f", texto), true); }
  void espera_fallo(const fallo_carga& cual) const {
    ASSERT_TRUE(fallo);
    EXPECT_EQ(fallo->linea, cual.linea);
    EXPECT_TRUE(*fallo == cual) << static_cast<int>(fallo->cual) << ": " << fallo->hay << ", " << fallo->limite;
    EXPECT_TRUE(vacia()) << "nothing is half loaded";
  }
  bool vacia() const { return v.dir_max == 0 && std::ranges::count(v.buffer_salida, 0xFF) == total_celdas; }
  auto marcas() const { return std::ranges::count(v.mascara_salida, 1); }
  bytes celdas(long desde, long cuantas) const {
    return {v.buffer_salida.begin() + desde, v.buffer_salida.begin() + desde + cuantas};
  }

  apoyo::carpeta dir;
  gemelo plat;
  contador_cambios cambios;
  Variables_grab v;
  avance a{cambios};
  std::optional<fallo_carga> fallo;
};

TEST_F(carga, samples_of_all_record_types_and_line_ends_give_the_same_image) {
  cargar_archivo(MUESTRAS "/demo-s1.s19", false);
  EXPECT_FALSE(fallo);
  EXPECT_EQ(v.dir_max, 0x13B3);
  EXPECT_EQ(celdas(0, 8), (bytes{0x20, 0x00, 0x80, 0x00, 0, 0, 4, 0x20}));
  const Variables_grab primera = v;
  for (const char* otra : {MUESTRAS "/demo-s2.s19", MUESTRAS "/demo-s3.s19"}) {
    cargar_archivo(otra, false);
    EXPECT_EQ(v.buffer_salida, primera.buffer_salida) << otra;
    EXPECT_EQ(v.mascara_salida, primera.mascara_salida) << otra;
  }
  cargar_archivo(MUESTRAS "/completa-256k.s19", false);
  EXPECT_EQ(v.dir_max, total_flash - 1);
  EXPECT_EQ(marcas(), total_flash);
}

TEST_F(carga, without_a_data_line_or_after_a_stop_nothing_is_loaded) {
  const std::string datos = "S1061000AABBCCB8";
  for (const std::string texto : {"", "s1061000AABBCCB8", " S1061000AABBCCB8", "S\r\n\r\nS5030001FB", datos.c_str()}) {
    plat.en_cada_pasada = [&] { a.cancelar = texto == datos; };
    s19(texto);
    EXPECT_TRUE(vacia()) << texto;
    EXPECT_EQ(marcas(), 0) << texto;
    EXPECT_FALSE(fallo) << texto;
    a.cancelar = false;
  }
}

TEST_F(carga, bar_and_times_follow_the_load) {
  plat.en_cada_pasada = [&] { plat.pasar(std::chrono::seconds(65)); };
  // 10 of 22 characters are text of lines: 11.36 of 25 steps, and of these there are 24 to be seen.
  for (const auto& [texto, pasos] : {std::pair{"S0\r\nS0\r\nS9\r\n\r\nS9\r\nS9\r\n", 11}, {"S0", 0}}) {
    s19(texto);
    EXPECT_EQ(a.Progress.Value, pasos);
  }
  EXPECT_EQ(a.time_ini.Text.valor() + a.time_fin.Text.valor(), "00:01:0500:02:10");
}

TEST_F(carga, a_line_past_a_limit_is_named_and_the_image_wiped) {
  const auto larga = [](std::size_t cifras) { return "S1002000" + std::string(cifras, '5') + "00"; };
  using clase = fallo_carga::clase;
  const std::pair<std::string, fallo_carga> casos[] = {
      {"S1", {.cual = clase::linea_corta, .hay = 2, .limite = 10, .tipo = 1}},
      {"S2130200000", {.cual = clase::linea_corta, .hay = 11, .limite = 12, .tipo = 2}},
      {larga(249), {.cual = clase::datos_largos, .hay = 249, .limite = 248}},
      {larga(200'000), {.cual = clase::datos_largos, .hay = 200'000, .limite = 248}},
      {"S10610G0AABBCCB8", {.cual = clase::cifra, .hay = 7}},
      {"S3070003000\xF1\x31\x31", {.cual = clase::cifra, .hay = 12}},
      {"S20604000001FF", {.cual = clase::fuera_de_memoria, .hay = 0x40002}},
      {"S309FFFFFFFE0102030400", {.cual = clase::fuera_de_memoria, .hay = 0xFFFFFFFE}},
  };
  for (const auto& [linea, cual] : casos) {
    s19("S0030000FC\r\n" + larga(248) + "\r\n\r\n" + linea + "\r\nS1063000AABBCCB8");
    espera_fallo(fallo_en_linea(4, cual));
    EXPECT_EQ(marcas(), 124) << "marks of the lines in front stay";
  }
}

TEST_F(carga, a_record_stores_what_the_length_of_its_line_says) {
  const std::tuple<const char*, int, bytes> casos[] = {
      {"S30A0003100011223344550A", 0x31000, {0x11, 0x22, 0x33, 0x44, 0x55, 0xFF, 0xFF, 0xFF}},  // filled up to a group
      {"S1FF1abcaaBBCc00", 0x1ABC, {0xAA, 0xBB, 0xCC, 0xFF}},  // wrong count and checksum, lower case
      {"S10610005G.5 9::00", 0x1000, {5, 0, 0, 0}},            // a pair counts up to its first non-digit
      {"S20803FFFE0102030400", 0x3FFFE, {1, 2, 3, 4}},         // up to the last cell
      {"S30500040003FF", 0, {}},                               // no data, so no address out of range
      // many pairs at once
      {"S11310000102030405060708090A0B0C0D0E0F1G00", 0x1000, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 1}},
  };
  for (const auto& [linea, desde, datos] : casos) {
    const auto cuantos = static_cast<int>(datos.size());
    std::ranges::fill(v.mascara_salida, 0);
    s19(linea);
    EXPECT_EQ(celdas(desde, cuantos), datos) << linea;
    EXPECT_EQ(marcas(), cuantos) << linea;
    EXPECT_EQ(v.dir_max, cuantos == 0 ? 0 : desde + cuantos - 1) << linea;
  }
}

TEST_F(carga, line_ends_of_a_binary_file_become_two_dots) {
  const std::string contenido("A\rB\n\r\nC\0\xFF\x1A\x80", 11), esperada("A..B\n..C\0\xFF\x1A\x80..", 14);
  bin(contenido);
  EXPECT_EQ(celdas(0, 14), bytes(esperada.begin(), esperada.end()));
  EXPECT_EQ(v.dir_max, 13);
  EXPECT_EQ(marcas(), 14);
  EXPECT_FALSE(fallo);
}

TEST_F(carga, a_binary_file_fills_the_last_cell_and_no_more_with_lines_of_252_characters) {
  std::string lleno(total_celdas - 2, 'x');
  for (std::size_t i = 252; i + 1 < lleno.size(); i += 254) lleno.replace(i, 2, "\r\n");
  bin(lleno);
  EXPECT_FALSE(fallo);
  EXPECT_EQ(v.dir_max, total_celdas - 1);
  EXPECT_EQ(v.buffer_salida[0x400], 'x');
  bin(lleno + "x");
  espera_fallo({.cual = fallo_carga::clase::no_cabe, .linea = 1033});
  bin("corta\r" + std::string(253, 'x'));
  espera_fallo({.cual = fallo_carga::clase::linea_larga, .hay = 253, .limite = 252, .linea = 2});
}

TEST_F(carga, a_file_that_changes_while_it_is_read_is_not_loaded_by_halves) {
  const std::string ruta = (dir.ruta() / "f").string();
  const std::function<void()> maneras[] = {
      [&] { fs::resize_file(ruta, 10'000); },
      [&] { fs::resize_file(ruta, std::uintmax_t{1} << 30); },
      [&] { fs::last_write_time(ruta, fs::file_time_type::clock::now() + std::chrono::hours(1)); },
  };
  for (const auto& cambiar : maneras) {
    plat.en_cada_pasada = [&, pasada = 0]() mutable {
      if (++pasada == 2) cambiar();
    };
    bin(std::string(100'000, '\r'));
    espera_fallo(fallo_de_archivo({causa_archivo::clase::ha_cambiado}));
  }
}

}  // namespace
