#include "files/lector_lineas.h"

#include <gtest/gtest.h>

#include "apoyo/carpeta.h"

namespace morvane {
namespace {

using finales = lector_lineas::finales;

/// The lines of a file as far as they are given out, with their true lengths.
std::string todas(const std::string& contenido, finales como = finales::todos) {
  static const apoyo::carpeta dir;
  lector_lineas lector;
  lector_lineas::linea linea;
  EXPECT_TRUE(lector.abrir(dir.escribir("l", contenido), como));
  std::string leidas;
  while (lector.siguiente(linea)) leidas.append(linea.texto) += "|" + std::to_string(linea.largo) + "|";
  EXPECT_FALSE(lector.fallo());
  return leidas;
}

TEST(LectorLineas, CadaFinalAcabaUnaLineaYLaMarcaDeUtf8NoEsDeLaPrimera) {
  EXPECT_EQ(todas("a\r\r\n\n\rb\r\nc"), "a|1||0||0||0|b|1|c|1|");
  EXPECT_EQ(todas("a\r\r\n\n\rb\r\nc", finales::cr), "a|1||0|\n|1|b|1|c|1|");
  EXPECT_EQ(todas("a\n\nb\n"), "a|1||0|b|1|");
  EXPECT_EQ(todas("a\n\nb\n", finales::cr), "a\n\nb\n|5|");
  EXPECT_EQ(todas("\xEF\xBB\xBF"
                  "a\n\xEF\xBB\xBF"),
            "a|1|\xEF\xBB\xBF|3|");
  EXPECT_EQ(todas("\xEF\xBB\xBF"), "");
  EXPECT_EQ(todas("\xEF\xBB\xBF"
                  "a",
                  finales::cr),
            "\xEF\xBB\xBF"
            "a|4|");
}

TEST(LectorLineas, UnaLineaLargaYSuFinalAlrededorDelBordeDeUnBloque) {
  for (const std::string final : {"\r", "\r\n", "\n"}) {
    for (std::size_t largo = 64 * 1024 - 5; largo <= 64 * 1024 + 1; ++largo) {
      const std::string larga(largo, 'y');
      const std::string esperada = larga.substr(0, lector_lineas::maximo) + "|" + std::to_string(largo) + "|";
      EXPECT_EQ(todas(larga + final), esperada);
      EXPECT_EQ(todas(larga + final + "z"), esperada + "z|1|");
    }
  }
}

}  // namespace
}  // namespace morvane
