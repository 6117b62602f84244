#include "mundo_carga.h"

namespace morvane {
namespace {

using bytes = std::vector<std::uint8_t>;
const caja ha_terminado{"", "Ha terminado de cargar el archivo", botones::Aceptar, icono::ninguno};

TEST(carga_s19, all_line_ends_and_types_in_one_file_give_the_same_image) {
  const char* const lineas[] = {"S0030000FC", "S1061000AABBCCB8", "S206020000010200", "S30700030000112200",
                                "S9030000FC"};
  for (const char* final : {"\r\n", "\r", "\n"}) {
    for (const bool cierre : {true, false}) {
      SCOPED_TRACE(testing::PrintToString(final) + (cierre ? "" : ", none at the end"));
      std::string texto;
      for (const char* linea : lineas) texto += (texto.empty() ? "" : final) + std::string(linea);
      mundo_carga m;
      m.cargar(texto + (cierre ? final : ""));
      EXPECT_EQ(m.celdas(0x1000, 4), (bytes{0xAA, 0xBB, 0xCC, 0xFF}));
      EXPECT_EQ(m.celdas(0x20000, 4), (bytes{1, 2, 0xFF, 0xFF}));
      EXPECT_EQ(m.celdas(0x30000, 4), (bytes{0x11, 0x22, 0xFF, 0xFF}));
      EXPECT_EQ(m.marcas(), 12);
      EXPECT_EQ(m.v.dir_max, 0x30003);
      EXPECT_EQ(m.plat.cajas, std::vector{ha_terminado});
    }
  }
}

TEST(carga_s19, what_is_no_data_line_has_no_effect) {
  for (const char* texto :
       {"", "S0030000FC\r\nS9030000FC\r\n", "s1061000AABBCCB8", " S1061000AABBCCB8", "S", "\r\n\r\n\r\n",
        "S5030001FB\r\nS70500001000EA\r\nS804001000EB\r\n", "S4061000AABBCCB8", ":10000000FF\x1A"}) {
    SCOPED_TRACE(testing::PrintToString(texto));
    mundo_carga m;
    m.v.dir_max = 0x1234;
    m.cargar(texto);
    EXPECT_TRUE(m.borrada());
    EXPECT_EQ(m.v.dir_max, 0);
    EXPECT_EQ(m.marcas(), 0);
    EXPECT_EQ(m.plat.cajas, std::vector{ha_terminado});
  }
}

TEST(carga_s19, a_second_load_replaces_the_image_and_keeps_the_marks) {
  mundo_carga m;
  m.cargar("S10701000102030400");
  m.v.dir_max_grabada = m.v.dir_max;
  m.cargar("S107200005060708BE");
  EXPECT_EQ(m.celdas(0x100, 4), bytes(4, 0xFF));
  EXPECT_EQ(m.v.dir_max, 0x2003);
  EXPECT_EQ(m.v.dir_max_grabada, 0x103);
  EXPECT_TRUE(m.marcada(0x100) && m.marcada(0x103) && m.marcada(0x2000));
  EXPECT_EQ(m.marcas(), 8);
}

TEST(carga_s19, a_stop_wished_before_the_first_line_loads_nothing) {
  for (const bool en_la_pasada : {false, true}) {
    mundo_carga m;
    m.a.cancelar = !en_la_pasada;
    if (en_la_pasada) m.plat.en_cada_pasada = [&m] { m.a.cancelar = true; };
    m.v.dir_max = 0x1234;
    m.cargar("S1061000AABBCCB8\r\n");
    EXPECT_TRUE(m.borrada());
    EXPECT_EQ(m.v.dir_max, 0);
    EXPECT_FALSE(m.a.cancelar);
    EXPECT_EQ(m.plat.cajas, std::vector{ha_terminado});
  }
}

TEST(carga_s19, bar_and_times_follow_the_load) {
  mundo_carga m;
  int barra_en_la_pasada = -1, barra_en_la_caja = -1;
  m.a.Progress.Value = 7;
  m.a.cancelar = false;
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
  EXPECT_EQ(m.a.Progress.Value, 0);
  EXPECT_FALSE(m.a.cancelar);
  EXPECT_EQ(m.a.time_ini.Text.valor(), "00:00:00");
  EXPECT_EQ(m.a.time_fin.Text.valor(), "00:01:05");
}

TEST(carga_s19, samples) {
  mundo_carga s1, s2, s3, completa;
  s1.cargar_archivo(MUESTRAS "/demo-s1.s19");
  s2.cargar_archivo(MUESTRAS "/demo-s2.s19");
  s3.cargar_archivo(MUESTRAS "/demo-s3.s19");
  completa.cargar_archivo(MUESTRAS "/completa-256k.s19");
  EXPECT_EQ(s1.v.dir_max, 0x13B3);
  EXPECT_EQ(s1.celdas(0, 8), (bytes{0x20, 0x00, 0x80, 0x00, 0, 0, 4, 0x20}));
  EXPECT_EQ(s1.celdas(0x400, 32), bytes(32, 0));
  EXPECT_TRUE(s1.v.buffer_salida == s2.v.buffer_salida && s1.v.mascara_salida == s2.v.mascara_salida);
  EXPECT_TRUE(s1.v.buffer_salida == s3.v.buffer_salida && s1.v.mascara_salida == s3.v.mascara_salida);
  EXPECT_EQ(completa.v.dir_max, total_flash - 1);
  EXPECT_EQ(completa.marcas(), total_flash);
  EXPECT_EQ(completa.celdas(0, 0x4F8), s1.celdas(0, 0x4F8));
}

}  // namespace
}  // namespace morvane
