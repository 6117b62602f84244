// What the map says after each command, held against the chip itself.

#include "banco_ordenes.h"
#include "shell/texto_mapa.h"

using namespace apoyo;

namespace {

struct mapa_test : banco_ordenes {
  void SetUp() override {
    banco_ordenes::SetUp();
    cargar("uno.s19", "S32500000100" + std::string(64, '5') + "00\r\nS315000001F8" + std::string(32, 'A') + "00\r\n");
  }
  void cargar(const std::string& nombre, const std::string& contenido) {
    plat.olvidar_respuestas();
    plat.responder(vbNo);
    abrir_archivo(nombre, contenido);
  }
  const mapa_flash& mapa() const { return f.progreso.mapa; }
  /// A letter for each of the first three cells and for the first one of the third block.
  std::string foto() const {
    std::string texto;
    for (const int i : {0, 1, 2, 128}) texto += ".beEid"[static_cast<int>(aspecto_de(mapa(), i))];
    return texto;
  }
  /// The chip holds `bytes` where a cell and `donde` overlap.
  bool iguales(const std::vector<std::uint8_t>& bytes, int celda, tramo donde) const {
    const tramo t = tramo_de_celda(celda);
    for (std::int32_t i = std::max(t.desde, donde.desde); i < std::min(t.hasta, donde.hasta); ++i) {
      if (bytes[static_cast<std::size_t>(i)] != lejos.chip.flash()[static_cast<std::size_t>(i)]) return false;
    }
    return true;
  }
  bool cierto(int i) const {
    const std::vector<std::uint8_t> vacia(total_celdas, 0xFF);
    const tramo todo{0, total_flash};
    return (!mapa().sabe(i, hecho::borrada) || iguales(vacia, i, todo)) &&
           (!mapa().sabe(i, hecho::escrita) || iguales(v.buffer_salida, i, mapa().escrito())) &&
           (!mapa().sabe(i, hecho::leida) || iguales(v.buffer_entrada, i, mapa().leido())) &&
           (!mapa().sabe(i, hecho::igual) || iguales(v.buffer_salida, i, todo));
  }
};

TEST_F(mapa_test, each_command_leaves_its_mark_and_another_chip_none) {
  const auto tras_orden = [this](orden cual) { return correr(cual), foto(); };
  EXPECT_EQ(foto(), "....");
  EXPECT_EQ(tras_orden(men_borrar_t_Click), "bbbb");
  EXPECT_EQ(tras_orden(men_prog_t_Click), "eebb");
  EXPECT_EQ(texto_de_celda(mapa(), 1),
            "000200–0003FF, bloque 000000–007FFF\nEscrita en parte (000200–000207)\nLa imagen tiene datos aquí");
  correr(men_leer_ft_Click);
  EXPECT_EQ(texto_de_celda(mapa(), 0),
            "000000–0001FF, bloque 000000–007FFF\nEscrita en parte (000100–0001FF)\nLeída\nLa imagen tiene datos aquí");
  EXPECT_EQ(resumen_del_mapa(mapa()),
            "512 celdas de 512 bytes; Borrada: 510; Escrita: 2; con datos en la imagen: 3; leídas: 2");
  EXPECT_EQ(tras_orden(mn_verifi_t_f_Click), "dddb") << "the zeroed cells are in the image and not in the chip";
  EXPECT_EQ(tras_orden(men_verific_t_Click), "dddb") << "data in a block with written cells is no news";
  cargar("dos.s19", ocho_bytes);
  EXPECT_EQ(foto(), "EEbb");
  correr(men_prog_t_Click);
  EXPECT_EQ(tras_orden(men_proteger_f_Click), "eb.b");
  correr(men_borrar_t_Click);
  v.dir_max = 0;
  limpiar_buffer_salida(v);
  EXPECT_EQ(tras_orden(mn_verifi_t_f_Click), "iiib");
  EXPECT_TRUE(mapa().cabeza().vacio());
  f.link.valores.puerto = "COM2";
  EXPECT_EQ(tras_orden(men_reset_Click), "....");
  correr(men_borrar_t_Click);
  correr(men_leer_ft_Click, {.cuelga_en = 2});
  EXPECT_EQ(foto() + textos(), "...." + texto_interrumpida) << "a device that vanishes needs no question";
}

TEST_F(mapa_test, nothing_is_said_that_is_not_so_wherever_a_command_breaks_off) {
  for (const orden cual : {men_borrar_t_Click, men_prog_t_Click, men_leer_ft_Click, men_verific_t_Click}) {
    for (std::uint64_t n = 1; n <= 40; n += 1 + n / 20) {
      // While writing any five characters are a reply; what comes of that is for a verification to find.
      const std::uint64_t si_lee = cual == men_prog_t_Click ? 0 : n;
      const puente::faltas faltas[] = {{.muda_desde = n},
                                       {.cortada_en = n, .cortada_tras = 3},
                                       {.suma_mala_en = n},
                                       {.error_en = si_lee},
                                       {.balbuceo_desde = si_lee}};
      for (const puente::faltas& mal : faltas) {
        correr(men_prog_t_Click);
        correr(mn_verifi_t_f_Click);
        ASSERT_EQ(foto(), "dddb");
        correr(cual, mal);
        for (int i = 0; i < 130; ++i) ASSERT_TRUE(cierto(i)) << "frame " << n << "\n" << texto_de_celda(mapa(), i);
      }
    }
  }
}

}  // namespace
