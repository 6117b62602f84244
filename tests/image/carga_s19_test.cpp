#include "mundo_carga.h"

namespace morvane {
namespace {

void espera_final(const mundo_carga& m, const caja& esperada) {
  ASSERT_EQ(m.plat.cajas.size(), 1U);
  EXPECT_EQ(m.plat.cajas[0].texto, esperada.texto);
  EXPECT_EQ(m.plat.cajas[0], esperada);
  EXPECT_EQ(m.a.Progress.Value, 0);
  EXPECT_FALSE(m.a.cancelar);
}

void espera_terminada(const mundo_carga& m) {
  espera_final(m, {"", "Ha terminado de cargar el archivo", botones::Aceptar, icono::ninguno});
}

void espera_fallo(const mundo_carga& m, const std::string& detalle) {
  const std::string texto = "No se ha podido cargar el archivo:\r\n" + m.v.ruta_archivo + "\r\n" + detalle;
  espera_final(m, {"Atención", texto, botones::Aceptar, icono::critico});
  EXPECT_TRUE(m.borrada());
  EXPECT_EQ(m.v.dir_max, 0);
}

TEST(carga_s19, all_line_ends_and_types_in_one_file_give_the_same_image) {
  for (const std::string final : {"\r\n", "\r", "\n"}) {
    SCOPED_TRACE(testing::PrintToString(final));
    mundo_carga m;
    std::string texto;
    for (const char* linea : {"S0030000FC", "S1061000AABBCCB8", "", "S206020000010200"}) texto.append(linea) += final;
    m.cargar(texto + "S30700030000112200");
    EXPECT_EQ(m.celdas(0x1000, 4), (bytes{0xAA, 0xBB, 0xCC, 0xFF}));
    EXPECT_EQ(m.celdas(0x20000, 4), (bytes{1, 2, 0xFF, 0xFF}));
    EXPECT_EQ(m.celdas(0x30000, 4), (bytes{0x11, 0x22, 0xFF, 0xFF}));
    EXPECT_EQ(m.marcas(), 12);
    EXPECT_EQ(m.v.dir_max, 0x30003);
    espera_terminada(m);
  }
}

TEST(carga_s19, without_a_data_line_or_after_a_stop_nothing_is_loaded) {
  const std::string datos = "S1061000AABBCCB8";
  for (const std::string& texto :
       {std::string(), "s" + datos.substr(1), " " + datos, "S\r\n\r\n" + datos.substr(1),
        "S4" + datos.substr(2) + "\r\nS5030001FB\r\nS70500001000EA\r\nS804001000EB", datos}) {
    SCOPED_TRACE(testing::PrintToString(texto));
    mundo_carga m;
    m.v.dir_max = 0x1234;
    m.plat.en_cada_pasada = [&] { m.a.cancelar = texto == datos; };
    m.cargar(texto);
    EXPECT_TRUE(m.borrada());
    EXPECT_EQ(m.v.dir_max, 0);
    EXPECT_EQ(m.marcas(), 0);
    espera_terminada(m);
  }
}

TEST(carga_s19, bar_and_times_follow_the_load) {
  mundo_carga m;
  int barra_en_la_pasada = -1, barra_en_la_caja = -1;
  m.a.Progress.Value = 7;
  m.plat.en_cada_pasada = [&] {
    barra_en_la_pasada = m.a.Progress.Value;
    m.plat.pasar(std::chrono::seconds(65));
  };
  m.plat.responder(vbOK, [&] {
    barra_en_la_caja = m.a.Progress.Value;
    m.a.cancelar = true;
  });
  m.cargar("S0\r\nS0\r\nS9\r\n\r\nS9\r\nS9\r\n");
  EXPECT_EQ(m.plat.pasadas, 1U);
  EXPECT_EQ(barra_en_la_pasada, 0);
  EXPECT_EQ(barra_en_la_caja, 11) << "10 of 22 characters are text of lines: 11.36 of 25 steps";
  EXPECT_EQ(m.a.time_ini.Text.valor() + m.a.time_fin.Text.valor(), "00:00:0000:01:05");
  espera_terminada(m);
}

TEST(carga_s19, bar_goes_in_whole_steps_and_the_window_is_told_of_nothing_else) {
  constexpr std::int64_t grande = 90'000'000;
  const std::array<std::int64_t, 4> casos[] = {// total, before, step, bar
                                               {50, 0, 1, 0},      {50, 2, 1, 2}, {50, 6, 1, 4},
                                               {1000, 0, 979, 24}, {3, 0, 2, 17}, {grande, 0, grande / 2, 12},
                                               {1, 0, 1, 5},       {0, 0, 4, 5}};
  mundo_carga m;
  for (const auto& [total, antes, paso, barra] : casos) {
    m.a.Progress.Value = 5;
    std::int64_t acumulado = antes;
    avanzar_progreso(m.a, total, paso, acumulado);
    EXPECT_EQ(m.a.Progress.Value, barra) << antes << " + " << paso << " of " << total;
    EXPECT_EQ(acumulado, antes + paso);
  }
  m.a.Progress.Value = 0;
  const auto antes = m.cambios.valor();
  std::int64_t acumulado = 0;
  for (int i = 0; i < 10'000; ++i) avanzar_progreso(m.a, 10'000, 1, acumulado);
  EXPECT_EQ(m.cambios.valor() - antes, 24U);
}

std::string de_datos(const char* cabecera, std::size_t cifras) {
  return cabecera + std::string(cifras, '5') + "00";
}

TEST(carga_s19, a_line_past_a_limit_is_named_and_the_image_wiped) {
  const std::pair<std::string, const char*> casos[] = {
      {"S1", "tiene 2 caracteres y un registro S1 necesita al menos 10"},
      {"S11310000", "tiene 9 caracteres y un registro S1 necesita al menos 10"},
      {"S2130200000", "tiene 11 caracteres y un registro S2 necesita al menos 12"},
      {"S305000200000", "tiene 13 caracteres y un registro S3 necesita al menos 14"},
      {de_datos("S1001000", 249), "el campo de datos tiene 249 caracteres y el máximo es 248"},
      {de_datos("S300FFFFFFFF", 250), "el campo de datos tiene 250 caracteres y el máximo es 248"},
      {de_datos("S1001000", 200'000), "el campo de datos tiene 200000 caracteres y el máximo es 248"},
      {"S10610G0AABBCCB8", "el carácter 7 es de la dirección y no es una cifra hexadecimal"},
      {"S206 20000010200", "el carácter 5 es de la dirección y no es una cifra hexadecimal"},
      {"S3070003000\xF1\x31\x31", "el carácter 12 es de la dirección y no es una cifra hexadecimal"},
      {"S2080400100102030400", "la dirección 0x040010 está fuera de la memoria"},
      {"S20604000001FF", "la dirección 0x040002 está fuera de la memoria"},
      {"S309FFFFFFFE0102030400", "la dirección 0xFFFFFFFE está fuera de la memoria"},
  };
  for (const auto& [linea, motivo] : casos) {
    SCOPED_TRACE(motivo);
    mundo_carga m;
    m.cargar("S0030000FC\r\nS1061000AABBCCB8\r\n\r\n" + linea + "\r\nS1062000AABBCCB8");
    espera_fallo(m, "Línea 4: " + std::string(motivo));
    EXPECT_EQ(m.marcas(), 4) << "marks of the lines in front stay";
  }
  EXPECT_EQ(mundo_carga().registro(de_datos("S1001000", 248)), std::nullopt);
}

TEST(carga_s19, samples) {
  mundo_carga s1, completa;
  s1.cargar_archivo(MUESTRAS "/demo-s1.s19");
  EXPECT_EQ(s1.v.dir_max, 0x13B3);
  EXPECT_EQ(s1.celdas(0, 8), (bytes{0x20, 0x00, 0x80, 0x00, 0, 0, 4, 0x20}));
  for (const char* otra : {MUESTRAS "/demo-s2.s19", MUESTRAS "/demo-s3.s19"}) {
    mundo_carga m;
    m.cargar_archivo(otra);
    EXPECT_TRUE(m.v.buffer_salida == s1.v.buffer_salida && m.v.mascara_salida == s1.v.mascara_salida) << otra;
  }
  completa.cargar_archivo(MUESTRAS "/completa-256k.s19");
  EXPECT_EQ(completa.v.dir_max, total_flash - 1);
  EXPECT_EQ(completa.marcas(), total_flash);
}

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

TEST(registro_s, long_lines_hold_what_their_groups_hold_alone_whatever_the_characters) {
  mundo_carga m;
  for (int c = 0; c < 256; ++c) {
    SCOPED_TRACE(c);
    const char letra = static_cast<char>(c);
    const std::string grupo{'3', letra, letra, '5', 'a', 'B', letra, letra};
    std::string largo = "S255020000";
    for (int i = 0; i < 11; ++i) largo += grupo;
    m.registro("S208010000" + grupo + "00");
    m.registro(largo + "00");
    for (int i = 0; i < 11; ++i) ASSERT_EQ(m.celdas(0x20000 + 4 * i, 4), m.celdas(0x10000, 4)) << i;
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
