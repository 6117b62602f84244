#include <gtest/gtest.h>

#include "apoyo/carpeta.h"
#include "image/cargar_bin.h"
#include "platform/gemelo.h"

using namespace morvane;

namespace {

struct carga_bin : testing::Test {
  void cargar(const std::string& contenido) {
    limpiar_buffer_salida(v);
    plat.cajas.clear();
    plat.paciencia = 10'000;
    v.ruta_archivo = dir.escribir("f.bin", contenido);
    cargar_bin(plat, v);
  }
  std::string imagen() const { return {v.buffer_salida.begin(), v.buffer_salida.begin() + v.dir_max + 1}; }

  apoyo::carpeta dir;
  gemelo plat;
  Variables_grab v;
};

TEST_F(carga_bin, line_ends_become_two_dots) {
  const std::string nulo(1, '\0');
  const std::pair<std::string, std::string> casos[] = {
      {"AB\r\nC", "AB..C.."},
      {"A\rB", "A..B.."},
      {"A\nB\r\n", "A\nB.."},
      {"\r\r\n", "...."},
      {"A\x1A"
       "B",
       "A\x1A"
       "B.."},
      {nulo + "\xFF\x80\r", nulo + "\xFF\x80.."},
      {"\n\r", "\n.."},
  };
  for (const auto& [contenido, esperada] : casos) {
    cargar(contenido);
    EXPECT_EQ(imagen(), esperada);
    EXPECT_EQ(std::count(v.mascara_salida.begin(), v.mascara_salida.begin() + v.dir_max + 1, 1), v.dir_max + 1);
    EXPECT_EQ(v.buffer_salida[static_cast<std::size_t>(v.dir_max) + 1], 0xFF);
    EXPECT_TRUE(plat.cajas.empty());
  }
  v.dir_max = 77;
  cargar("");
  EXPECT_TRUE(v.dir_max == 0 && v.buffer_salida[0] == 0xFF && plat.cajas.empty());
}

TEST_F(carga_bin, fills_the_last_cell_and_no_more_and_keeps_what_stands_at_0x400) {
  std::string lleno;
  for (int i = 0; i < 1040; ++i) lleno += std::string(250, 'x') + "\r\n";
  lleno += std::string(262146 - 1040 * 252 - 2, 'y');
  cargar(lleno);
  EXPECT_TRUE(plat.cajas.empty());
  EXPECT_TRUE(v.dir_max == 0x40001 && v.buffer_salida[0x400] == 'x' && v.buffer_salida[0x3FFFF] == 'y');
  cargar(lleno + "y");
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención",
                                            "No se ha podido cargar el archivo:\r\n" + v.ruta_archivo +
                                                "\r\nLínea 1041: el archivo no cabe en la memoria",
                                            botones::Aceptar, icono::critico}}));
  EXPECT_TRUE(v.dir_max == 0 && v.buffer_salida[0] == 0xFF);
}

TEST_F(carga_bin, a_line_has_at_most_252_characters) {
  cargar("corta\r" + std::string(252, 'x'));
  EXPECT_EQ(v.dir_max, 6 + 254);
  for (const std::size_t largo : {253u, 5'000'000u}) {
    cargar("corta\r" + std::string(largo, 'x'));
    ASSERT_EQ(plat.cajas.size(), 1u);
    EXPECT_TRUE(plat.cajas[0].texto.ends_with("\r\nLínea 2: tiene " + std::to_string(largo) +
                                              " caracteres y el máximo es 252"));
    EXPECT_TRUE(v.dir_max == 0 && v.buffer_salida[0] == 0xFF);
  }
}

TEST_F(carga_bin, a_file_that_changes_while_it_is_read_is_not_loaded_by_halves) {
  std::string contenido;
  while (contenido.size() < 100'000) contenido += std::string(100, 'x') + "\r\n";
  for (const std::uintmax_t nuevo : {10'000, 200'000}) {
    plat.en_cada_pasada = [&, pasada = 0]() mutable {
      if (++pasada == 2) std::filesystem::resize_file(dir.ruta() / "f.bin", nuevo);
    };
    cargar(contenido);
    ASSERT_EQ(plat.cajas.size(), 1u);
    EXPECT_TRUE(plat.cajas[0].texto.ends_with("\r\nMotivo: ha cambiado mientras se leía"));
    EXPECT_TRUE(v.dir_max == 0 && v.buffer_salida[0] == 0xFF);
  }
}

}  // namespace
