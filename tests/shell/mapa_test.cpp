// What the map says after each command, held against the chip itself.

#include <algorithm>

#include "apoyo/banco_principal.h"
#include "shell/texto_mapa.h"

using namespace apoyo;

namespace {

using orden = void (*)(frm_principal&);

struct mapa_test : banco_principal {
  void SetUp() override {
    empezar();
    cargar("uno.s19", "S32500000100" + std::string(64, '5') + "00\r\nS315000001F8" + std::string(32, 'A') + "00\r\n");
  }
  void cargar(const std::string& nombre, const std::string& contenido) {
    plat.olvidar_respuestas();
    plat.responder(vbNo);
    abrir_archivo(nombre, contenido);
    plat.olvidar_respuestas();
  }
  /// Runs a command on a well board that has had time to finish with the one before.
  void correr(orden cual, puente::faltas faltas = {}) {
    plat.pasar(1s);
    lejos.entregar(1000, plat.ahora());
    lejos.placa.fallos = faltas;
    plat.olvidar_respuestas();
    plat.responder(vbCancel);
    cual(f);
  }
  const std::vector<std::uint8_t> vacia = std::vector<std::uint8_t>(total_flash, 0xFF);

  const mapa_flash& mapa() const { return f.progreso.mapa; }
  /// A letter a cell, for the first `n`.
  std::string foto(int n) const {
    std::string texto;
    for (int i = 0; i < n; ++i) texto += ".beEid"[static_cast<int>(aspecto_de(mapa(), i))];
    return texto;
  }

  bool igual_en(const std::vector<std::uint8_t>& bytes, tramo t) {
    return std::equal(bytes.begin() + t.desde, bytes.begin() + t.hasta, lejos.chip.flash().begin() + t.desde);
  }
  static tramo comun(tramo a, tramo b) { return {std::max(a.desde, b.desde), std::min(a.hasta, b.hasta)}; }
  bool cierto(int celda) {
    const tramo t = tramo_de_celda(celda);
    const std::int32_t bloque = t.desde & ~0x7FFF;
    if (mapa().sabe(celda, hecho::borrada) && !igual_en(vacia, t)) return false;
    if (mapa().sabe(celda, hecho::escrita) && !igual_en(v.buffer_salida, comun(t, mapa().escrito()))) return false;
    if (mapa().sabe(celda, hecho::leida) && !igual_en(v.buffer_entrada, comun(t, mapa().leido()))) return false;
    if (mapa().sabe(celda, hecho::igual) && !igual_en(v.buffer_salida, t)) return false;
    return !mapa().sabe(celda, hecho::distinta) || !igual_en(v.buffer_salida, {bloque, bloque + 0x8000});
  }
};

TEST_F(mapa_test, each_command_leaves_its_mark) {
  EXPECT_EQ(foto(3), "...");
  correr(men_borrar_t_Click);
  EXPECT_EQ(foto(3), "bbb");
  correr(men_prog_t_Click);
  EXPECT_EQ(foto(3), "eeb");
  EXPECT_EQ(texto_de_celda(mapa(), 1),
            "000200–0003FF, bloque 000000–007FFF\nEscrita en parte (000200–000207)\nLa imagen tiene datos aquí");
  correr(men_leer_ft_Click);
  EXPECT_EQ(texto_de_celda(mapa(), 0),
            "000000–0001FF, bloque 000000–007FFF\nEscrita en parte (000100–0001FF)\nLeída\nLa imagen tiene datos aquí");
  EXPECT_EQ(resumen_del_mapa(mapa()),
            "512 celdas de 512 bytes; Borrada: 510; Escrita: 2; con datos en la imagen: 3; leídas: 2");
  correr(mn_verifi_t_f_Click);
  EXPECT_EQ(foto(3) + foto(65).back(), "dddb") << "the zeroed cells are in the image and not in the chip";
  correr(men_verific_t_Click);
  EXPECT_EQ(foto(3) + foto(65).back(), "dddb") << "data in a block with written cells is no news";
  cargar("dos.s19", ocho_bytes);
  EXPECT_EQ(foto(3), "EEb");
  correr(mn_verifi_t_f_Click);
  EXPECT_EQ(foto(3), "ddd");
  correr(men_prog_t_Click);
  correr(men_proteger_f_Click);
  EXPECT_EQ(foto(4), "eb.b");
  correr(men_borrar_t_Click);
  v.dir_max = 0;
  limpiar_buffer_salida(v);
  correr(mn_verifi_t_f_Click);
  EXPECT_EQ(foto(64) + foto(65).back(), std::string(64, 'i') + "b");
  EXPECT_TRUE(mapa().cabeza().vacio());
}

TEST_F(mapa_test, nothing_is_said_that_is_not_so_wherever_a_command_breaks_off) {
  const orden ordenes[] = {men_borrar_t_Click, men_prog_t_Click, men_leer_ft_Click, men_verific_t_Click,
                           mn_verifi_t_f_Click};
  for (const orden cual : ordenes) {
    for (std::uint64_t n = 1; n <= 40; ++n) {
      for (const int falta : {0, 1, 2, 3, 4, 5}) {
        correr(men_prog_t_Click);
        correr(mn_verifi_t_f_Click);
        ASSERT_EQ(foto(2), "dd");
        const std::uint64_t donde = lejos.placa.tramas() + n;
        puente::faltas mal;
        if (falta == 0) mal.muda_desde = donde;
        if (falta == 1) mal.cortada_en = donde, mal.cortada_tras = 3;
        if (falta == 2) mal.suma_mala_en = donde;
        if (falta == 3) mal.calla_en = donde;
        // While writing any five characters are a reply; what comes of that is for a verification to find.
        if (falta == 4 && cual != men_prog_t_Click) mal.balbuceo_desde = donde;
        if (falta == 5 && cual != men_prog_t_Click) mal.error_en = donde;
        correr(cual, mal);
        for (int i = 0; i < celdas_del_mapa; ++i) {
          ASSERT_TRUE(cierto(i)) << "frame " << n << ", fault " << falta << "\n" << texto_de_celda(mapa(), i);
        }
        lejos.placa.fallos = {};
        lejos.placa.vaciar();
      }
    }
  }
}

TEST_F(mapa_test, another_chip_may_be_there_when_the_port_is_another_or_the_device_vanished) {
  correr(men_borrar_t_Click);
  f.link.valores.puerto = "COM2";
  correr(men_reset_Click);
  EXPECT_EQ(foto(3), "...");
  correr(men_prog_t_Click);
  EXPECT_EQ(foto(3), "eeb");
  puente::faltas mal;
  mal.cuelga_en = lejos.placa.tramas() + 12;
  correr(men_leer_ft_Click, mal);
  EXPECT_EQ(foto(3), "...");
}

}  // namespace
