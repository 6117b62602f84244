#include "bridge/opciones.h"

#include <gtest/gtest.h>

#include <sstream>
#include <vector>

namespace puente {
namespace {

lectura_opciones lee(const std::string& orden) {
  std::istringstream palabras(orden);
  const std::vector<std::string> textos{std::istream_iterator<std::string>(palabras), {}};
  std::vector<const char*> argumentos;
  for (const std::string& texto : textos) argumentos.push_back(texto.c_str());
  return leer_opciones(argumentos);
}

TEST(Opciones, LleganASuSitio) {
  const auto [o, error] =
      lee("--enlace p/COM1 --baudios=9600 --flash f --traza=t=1 --protegida --sondeos-borrado 0 --falla-borrado "
          "--falla-config --falla-permiso --mudo --muda-desde 1 --calla-en 2 --cortada-en 3 --cortada-tras 4 "
          "--retrasada-en 5 --retrasa-todas --retraso-ms 6 --suma-mala-en 7 --suma-minuscula-en 8 --error-en 9 "
          "--codigo-error X --reset-en 10 --reset-repetido 11 --ruido 12 --balbuceo-desde 13 --balbuceo-etx "
          "--goteo-ms 14 --por-mil-sin-grabar 15 --cuelga-en 16 --semilla 18446744073709551615");
  ASSERT_EQ(error, "");
  EXPECT_EQ(o.enlace + o.flash + o.traza, "p/COM1ft=1");
  EXPECT_EQ(o.baudios, 9600U);
  EXPECT_TRUE(o.protegida && o.falla_borrado && o.falla_config && o.falla_permiso && o.mudo);
  EXPECT_EQ(o.sondeos_de_borrado, 0);
  const faltas& f = o.fallos;
  const std::vector<std::uint64_t> hay{f.muda_desde,     f.calla_en,   f.cortada_en,         f.cortada_tras,
                                       f.retrasada_en,   f.retraso_ms, f.suma_mala_en,       f.suma_minuscula_en,
                                       f.error_en,       f.reset_en,   f.reset_repetido,     f.ruido,
                                       f.balbuceo_desde, f.goteo_ms,   f.por_mil_sin_grabar, f.cuelga_en};
  EXPECT_EQ(hay, (std::vector<std::uint64_t>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16}));
  EXPECT_EQ(f.codigo_error, 'X');
  EXPECT_TRUE(f.retrasa_todas && f.balbuceo_etx);
  EXPECT_EQ(f.semilla, UINT64_MAX);
}

TEST(Opciones, LaUltimaCuentaYLaAyudaVaAntesQueLosErrores) {
  EXPECT_EQ(lee("").valores.baudios, 57600U);
  EXPECT_EQ(lee("--baudios 9600 --sin-ritmo").valores.baudios, 0U);
  EXPECT_EQ(lee("--sin-ritmo --baudios 9600").valores.baudios, 9600U);
  EXPECT_TRUE(lee("--help --nada").valores.ayuda);
  EXPECT_EQ(lee("--ayuda --nada").error, "");
}

TEST(Opciones, Errores) {
  const std::pair<const char*, const char*> casos[] = {
      {"--nada", "opción desconocida: --nada"},
      {"--enlace", "falta el valor de la opción --enlace"},
      {"--enlace=", "valor no válido para la opción --enlace: "},
      {"--mudo=1", "la opción --mudo no lleva valor"},
      {"--baudios 0", "valor no válido para la opción --baudios: 0"},
      {"--baudios 57600x", "valor no válido para la opción --baudios: 57600x"},
      {"--calla-en 0", "valor no válido para la opción --calla-en: 0"},
      {"--por-mil-sin-grabar 1001", "valor no válido para la opción --por-mil-sin-grabar: 1001"},
      {"--error-en 1 --codigo-error 66", "valor no válido para la opción --codigo-error: 66"},
      {"--cortada-tras 3", "--cortada-tras requiere --cortada-en"},
      {"--retrasa-todas", "--retrasada-en y --retrasa-todas requieren --retraso-ms"},
      {"--retraso-ms 5", "--retraso-ms requiere --retrasada-en o --retrasa-todas"},
      {"--codigo-error 1", "--codigo-error requiere --error-en"},
      {"--reset-repetido 2", "--reset-repetido requiere --reset-en"},
      {"--balbuceo-etx", "--balbuceo-etx requiere --balbuceo-desde"},
  };
  for (const auto& [argumentos, texto] : casos) EXPECT_EQ(lee(argumentos).error, texto);
}

}  // namespace
}  // namespace puente
