#include "mundo_carga.h"
#include "platform/lector_lineas.h"

namespace morvane {
namespace {

void esperar_fallo(mundo_carga& m, const std::string& detalle) {
  const std::string texto = "No se ha podido cargar el archivo:\r\n" + m.v.ruta_archivo + "\r\n" + detalle;
  EXPECT_EQ(m.plat.cajas, std::vector{(caja{"Atención", texto, botones::Aceptar, icono::critico})})
      << testing::PrintToString(m.plat.cajas.empty() ? "no box" : m.plat.cajas.front().texto);
  EXPECT_TRUE(m.borrada());
  EXPECT_EQ(m.v.dir_max, 0);
  EXPECT_EQ(m.a.Progress.Value, 0);
  EXPECT_FALSE(m.a.cancelar);
  EXPECT_EQ(m.a.time_fin.Text.valor(), "00:00:00");
}

std::string de_datos(const char* cabecera, std::size_t cifras) {
  return cabecera + std::string(cifras, '5') + "00";
}

TEST(fallos_s19, a_line_past_a_limit_is_named_and_the_image_wiped) {
  const struct {
    std::string linea;
    const char* motivo;
  } casos[] = {
      {"S1", "tiene 2 caracteres y un registro S1 necesita al menos 10"},
      {"S11310000", "tiene 9 caracteres y un registro S1 necesita al menos 10"},
      {"S2130200000", "tiene 11 caracteres y un registro S2 necesita al menos 12"},
      {"S305000200000", "tiene 13 caracteres y un registro S3 necesita al menos 14"},
      {de_datos("S1001000", 249), "el campo de datos tiene 249 caracteres y el máximo es 248"},
      {de_datos("S300FFFFFFFF", 250), "el campo de datos tiene 250 caracteres y el máximo es 248"},
      {de_datos("S1001000", 200'000), "el campo de datos tiene 200000 caracteres y el máximo es 248"},
      {"S10610G0AABBCCB8", "el carácter 7 es de la dirección y no es una cifra hexadecimal"},
      {"S206 20000010200", "el carácter 5 es de la dirección y no es una cifra hexadecimal"},
      {"S3070003000\xF1"
       "112200",
       "el carácter 12 es de la dirección y no es una cifra hexadecimal"},
      {"S2080400100102030400", "la dirección 0x040010 está fuera de la memoria"},
      {"S20803FFFF0102030400", "la dirección 0x040002 está fuera de la memoria"},
      {"S20604000001FF", "la dirección 0x040002 está fuera de la memoria"},
      {"S309FFFFFFFE0102030400", "la dirección 0xFFFFFFFE está fuera de la memoria"},
  };
  for (const auto& caso : casos) {
    for (const std::string final : {"\r\n", "\r", "\n"}) {
      SCOPED_TRACE(caso.linea.substr(0, 20) + testing::PrintToString(final));
      mundo_carga m;
      std::string texto;
      for (const auto* linea : {"S0030000FC", "S1061000AABBCCB8", "", caso.linea.c_str()}) texto.append(linea) += final;
      m.cargar(texto + "S1062000AABBCCB8");
      esperar_fallo(m, "Línea 4: " + std::string(caso.motivo));
      EXPECT_EQ(m.marcas(), 4) << "marks of the lines in front stay";
    }
  }
}

TEST(fallos_s19, the_longest_data_field_is_taken) {
  mundo_carga m;
  m.cargar(de_datos("S1001000", 248));
  EXPECT_EQ(m.v.dir_max, 0x107B);
}

TEST(fallos_s19, a_file_that_cannot_be_read_is_named) {
  for (const std::string nombre : {"/no_existe.s19", ""}) {
    SCOPED_TRACE(nombre);
    mundo_carga m;
    m.cargar("S1061000AABBCCB8");
    m.plat.cajas.clear();
    m.cargar_archivo(m.carpeta.ruta().string() + nombre);
    lector_lineas lector;
    ASSERT_FALSE(lector.abrir(m.v.ruta_archivo, lector_lineas::finales::cr));
    esperar_fallo(m, "Motivo: " + lector.motivo());
  }
}

}  // namespace
}  // namespace morvane
