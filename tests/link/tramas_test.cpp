#include "apoyo/banco_enlace.h"

using namespace morvane;
using namespace apoyo;

namespace {

using tramas = banco_enlace;

TEST_F(tramas, every_command_goes_out_as_these_bytes) {
  abrir();
  const std::pair<const char*, std::string> casos[] = {
      {"A",
       "\x02"
       "A41\x03"},
      {"D",
       "\x02"
       "D44\x03"},
      {"a",
       "\x02"
       "a61\x03"},
      {"c",
       "\x02"
       "c63\x03"},
      {"i",
       "\x02"
       "i69\x03"},
      {"j",
       "\x02"
       "j6A\x03"},
      {"d2E",
       "\x02"
       "d2EDB\x03"},
      {"C000000000000",
       "\x02"
       "C00000000000083\x03"},
      {"C000000000400",
       "\x02"
       "C00000000040087\x03"},
      {"g000414FFFF4AC8",
       "\x02"
       "g000414FFFF4AC898\x03"},
  };
  for (const auto& [comando, trama] : casos) {
    const std::size_t antes = linea.escrito().size();
    e.respuesta_lista = e.datos_listos = true;
    enviar_comando(e, comando);
    EXPECT_EQ(linea.escrito().substr(antes), trama);
    EXPECT_EQ(e.ultimo_comando, comando[0]);
    EXPECT_FALSE(e.respuesta_lista || e.datos_listos) << comando;
  }
}

TEST_F(tramas, the_journal_gets_the_frame_and_only_from_its_sender) {
  abrir();
  {
    fichero diario;
    ASSERT_EQ(ficheros.abrir(e.valores.ruta_aplicacion + "diario.txt", archivos::modo::escribir, diario), 0);
    enviar_comando(e, "a");
    enviar_comando_log(e, "g0004001234ABCD", diario);
    fichero cerrado;
    enviar_comando_log(e, "g000404FFFFFFFF", cerrado);
  }
  EXPECT_EQ(dir.leer("diario.txt"),
            "\x02"
            "g0004001234ABCD" +
                suma_comprobacion("g0004001234ABCD") + "\x03\r\n");
  EXPECT_EQ(dir.leer("diario.txt").size(), 21u);
  EXPECT_EQ(lejos.comandos.back(), "g000404FFFFFFFF");
}

TEST(checksum, keeps_two_digits_and_drops_the_carry) {
  EXPECT_EQ(suma_comprobacion("\x7F\x7F\x07"), "05");
  EXPECT_EQ(suma_comprobacion("g000414FFFF4AC8"), "98");
  EXPECT_EQ(suma_comprobacion("\xFF\xFF"), "FE");
}

TEST(checksum, tells_good_frames_from_bad_ones) {
  const std::pair<const char*, bool> casos[] = {
      {"030", true},   {"00292", true}, {"031", false},   {"", false},     {"0", false},     {"30", false},
      {"0AAB2", true}, {"0FAB7", true}, {"0FAb7", false}, {"00AA1", true}, {"00Aa1", false},
  };
  for (const auto& [trama, buena] : casos) EXPECT_EQ(validar_checksum(trama), buena) << trama;
}

}  // namespace
