#include "banco_ordenes.h"
#include "shell/texto_mapa.h"

using namespace apoyo;

namespace {

struct mapa_test : banco_ordenes {
  /// Runs a command; then a letter for each of the first three cells and for the first one of the third block.
  std::string tras_orden(orden cual, const puente::faltas& mal = {}) {
    correr(cual, mal);
    std::string texto;
    for (const int i : {0, 1, 2, 128}) texto += ".beErid"[static_cast<int>(aspecto_de(f.avance.mapa, i))];
    return texto;
  }
};

TEST_F(mapa_test, each_command_leaves_its_mark_and_what_was_cut_off_or_another_chip_none) {
  abrir_soltado(f, dir.escribir("uno.s19", "S3090000010055555555\r\nS315000001F8" + std::string(32, 'A') + "00\r\n"));
  EXPECT_EQ(tras_orden(men_borrar_t_Click), "bbbb");
  EXPECT_EQ(tras_orden(men_prog_t_Click), "eebb");
  correr(men_leer_ft_Click);
  EXPECT_EQ(resumen_del_mapa(f.avance.mapa),
            "512 celdas de 512 bytes; Borrada: 510; Escrita: 1; Igual: 1; con datos en la imagen: 3; leídas: 2");
  EXPECT_EQ(tras_orden(mn_verifi_t_f_Click), "dddb") << "the zeroed cells are in the image and not in the chip";
  EXPECT_EQ(tras_orden(men_verific_t_Click), "dddb") << "data in a block with written cells is no news";
  abrir_soltado(f, dir.escribir("dos.s19", ocho_bytes));
  EXPECT_EQ(tras_orden(men_verific_t_Click), "EEbb");
  EXPECT_EQ(tras_orden(men_prog_t_Click), "ebbb");
  EXPECT_EQ(tras_orden(men_proteger_f_Click), "eb.b");
  EXPECT_EQ(tras_orden(men_prog_t_Click, {.muda_desde = 21}), ".bbb");
  EXPECT_EQ(tras_orden(men_borrar_t_Click, {.cortada_en = 9, .cortada_tras = 3}), "....");
  f.link.valores.puerto = "COM2";
  correr(men_borrar_t_Click);
  v.dir_max = 0;
  limpiar_buffer_salida(v);
  EXPECT_EQ(tras_orden(mn_verifi_t_f_Click), "iiib");
  f.link.valores.puerto = "COM1";
  EXPECT_EQ(tras_orden(men_reset_Click), "....");
  correr(men_borrar_t_Click);
  EXPECT_EQ(tras_orden(men_leer_ft_Click, {.cuelga_en = 2}), "....");
  EXPECT_EQ(textos(), texto_interrumpida) << "a device that vanishes needs no question";
}

TEST_F(mapa_test, what_is_read_back_is_coloured_byte_by_byte) {
  abrir_soltado(f, dir.escribir("uno.s19", "S3090000060055555555\r\nS315000001F8" + std::string(32, 'A') + "00\r\n"));
  correr(men_prog_t_Click);
  lejos.chip.flash()[0x200] ^= 1;
  EXPECT_EQ(tras_orden(mn_verifi_t_f_Click), "dddb") << "a sum speaks of its whole block";
  correr(men_leer_ft_Click);
  const auto ahora = [this](int celda) { return nombre_de(aspecto_de(f.avance.mapa, celda)); };
  EXPECT_STREQ(ahora(0), "Igual");
  EXPECT_STREQ(ahora(1), "Distinta");
  EXPECT_STREQ(ahora(2), "Igual");
  EXPECT_STREQ(ahora(3), "Escrita") << "of a cell that was read in part nothing good is said";
}

}  // namespace
