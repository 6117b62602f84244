#include "apoyo/banco.h"
#include "apoyo/guion.h"

using namespace apoyo;

namespace {

using tramas = banco_enlace<guion>;

TEST_F(tramas, every_command_goes_out_as_these_bytes) {
  reabrir();
  const std::pair<const char*, const char*> casos[] = {
      {"A", "\002A41\003"},
      {"D", "\002D44\003"},
      {"a", "\002a61\003"},
      {"c", "\002c63\003"},
      {"i", "\002i69\003"},
      {"j", "\002j6A\003"},
      {"d2E", "\002d2EDB\003"},
      {"C000000000000", "\002C00000000000083\003"},
      {"C000000000400", "\002C00000000040087\003"},
      {"g000414FFFF4AC8", "\002g000414FFFF4AC898\003"},
  };
  for (const auto& [comando, bytes] : casos) {
    const std::size_t antes = linea.escrito().size();
    e.respuesta_lista = e.datos_listos = true;
    enviar_comando(e, comando);
    EXPECT_EQ(linea.escrito().substr(antes), bytes);
    EXPECT_EQ(e.ultimo_comando, comando[0]);
    EXPECT_FALSE(e.respuesta_lista || e.datos_listos) << comando;
  }
}

TEST_F(tramas, the_journal_gets_the_frame_and_only_from_its_sender) {
  reabrir();
  {
    fichero diario, cerrado;
    ASSERT_EQ(ficheros.abrir(e.valores.ruta_aplicacion + "diario.txt", archivos::modo::escribir, diario), 0);
    enviar_comando(e, "a");
    enviar_comando_log(e, "g000414FFFF4AC8", diario);
    enviar_comando_log(e, "g000404FFFFFFFF", cerrado);
  }
  EXPECT_EQ(dir.leer("diario.txt"), trama("g000414FFFF4AC898") + "\r\n");
  EXPECT_EQ(lejos.comandos.back(), "g000404FFFFFFFF");
}

TEST(checksum, keeps_two_upper_case_digits_drops_the_carry_and_tells_good_frames_from_bad_ones) {
  EXPECT_EQ(suma_comprobacion("\x7F\x7F\x07"), "05");
  EXPECT_EQ(suma_comprobacion("\xFF\xFF"), "FE");
  for (const char* buena : {"030", "00292", "0FAB7", "00AA1"}) EXPECT_TRUE(validar_checksum(buena)) << buena;
  for (const char* mala : {"031", "", "0", "30", "0FAb7", "00Aa1"}) EXPECT_FALSE(validar_checksum(mala)) << mala;
}

}  // namespace
