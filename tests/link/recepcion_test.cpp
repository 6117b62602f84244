#include "link/recepcion.h"

#include "apoyo/banco.h"
#include "apoyo/guion.h"

using namespace apoyo;

namespace {

struct recepcion : banco_enlace<guion> {
  void SetUp() override { reabrir(); }
  /// Puts a text on the line and lets the pump deliver it.
  void llega(const std::string& texto) {
    lejos.poner(texto, plat.ahora());
    plat.DoEvents();
  }
  void contesta(const char* comando, const std::string& texto) {
    enviar_comando(e, comando);
    llega(texto);
  }
  /// The status byte and the bits of it that are noted.
  std::string estado() const {
    std::string bits;
    for (const int bit : {e.bit_wip, e.bit_wen, e.bit_config, e.bit_wef, e.bit_fs}) bits += std::to_string(bit);
    return std::to_string(e.registro_estado) + " " + bits;
  }
};

TEST_F(recepcion, status_bits_come_from_their_places_and_an_inactive_ezport_leaves_them) {
  const std::pair<const char*, const char*> casos[] = {{"01", "1 10000"},  {"22", "34 01100"}, {"40", "64 00010"},
                                                       {"2G", "2 01000"},  {"ZZ", "0 00000"},  {"1C", "28 00000"},
                                                       {"82", "130 01001"}};
  for (const auto& [digitos, esperado] : casos) {
    contesta("c", marco(std::string("0") + digitos));
    EXPECT_EQ(estado(), esperado);
  }
  EXPECT_EQ(textos(), "");
  contesta("c", marco("0FF"));
  EXPECT_EQ(estado(), "255 01001");
  EXPECT_EQ(plat.cajas,
            std::vector{critica("Atención",
                                "Verifique la conexión con el dispositivo, y compruebe que el EzPort está activo")});
  EXPECT_TRUE(e.respuesta_lista);
}

TEST_F(recepcion, only_a_reply_behind_c_is_a_status) {
  contesta("a", marco("0FF"));
  EXPECT_EQ(estado(), "0 00000");
  contesta("c", trama("030"));
  EXPECT_EQ(estado(), "48 00100");
  contesta("c", marco("0RESET"));
  EXPECT_EQ(textos(), "") << "the code 0 makes it a plain success";
}

TEST_F(recepcion, refusals_show_their_text_and_count_as_replies) {
  for (char codigo = '1'; codigo <= '9'; ++codigo) {
    e.corte = {};
    contesta("i", marco({codigo}));
    EXPECT_EQ(ultima(), critica("Atención respuesta del Chip", ultima().texto));
    EXPECT_TRUE(e.respuesta_lista && e.codigo_respuesta == codigo && !e.corte.interrumpida);
  }
  EXPECT_EQ(plat.cajas.front().texto, "");
  EXPECT_EQ(textos(),
            "El comando enviado fue demasiado largo|Error en CRC|El comando enviado fue demasiado corto|"
            "El comando enviado tiene un formato incorrecto|El tipo de comando no es soportado por el chip|"
            "Ez Port no está activado|Comando no implementado|Error parámetros fuera de rango");
  contesta("i", marco("X"));
  EXPECT_TRUE(e.respuesta_lista && plat.cajas.size() == 9u) << "an unknown code has no text";
}

TEST_F(recepcion, a_bad_checksum_is_told_once_and_breaks_off) {
  for (const std::string& mala : {trama("031"), trama(""), std::string("\x03"), trama("02b74"), trama("00Aa1")}) {
    reabrir();
    contesta("a", mala + mala + trama("030"));
    EXPECT_EQ(plat.cajas, std::vector{critica("Atención Error", texto_cheksum)});
    EXPECT_TRUE(!e.respuesta_lista && e.corte.interrumpida);
  }
}

TEST_F(recepcion, a_trickling_reply_is_held_back_until_it_is_whole_and_noise_does_not_spoil_it) {
  enviar_comando(e, "c");
  const std::string todo = "##" + marco("022");
  for (const char c : todo) {
    EXPECT_FALSE(e.datos_listos || e.respuesta_lista);
    llega({c});
  }
  EXPECT_TRUE(e.datos_listos && e.respuesta_lista);
  EXPECT_EQ(estado(), "34 01100");
  contesta("c", "ruido" + marco("002") + "x");
  EXPECT_EQ(e.respuesta, "00292") << "what stands behind the ETX waits for the next one";
  llega("yz" + marco("020"));
  EXPECT_EQ(e.registro_estado, 0x20);
}

TEST_F(recepcion, fixed_lengths_cut_their_slices_and_test_nothing) {
  const std::string bloque = trama("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghij");
  const struct {
    int input_len, umbral;
    std::size_t llegan;
    std::string respuesta;
    std::size_t quedan;
  } casos[] = {{0, 5, 9, "012", 0}, {15, 15, 17, bloque.substr(0, 15), 2}, {0, 16, 20, "456789AB", 0},
               {0, 5, 5, "012", 0}, {47, 47, 47, bloque.substr(0, 47), 0}, {0, 47, 48, bloque, 0}};
  for (const auto& c : casos) {
    const modo_fijo modo(serial, c.input_len, c.umbral);
    const auto corte = static_cast<std::size_t>(c.umbral) - 1;
    contesta("a", bloque.substr(0, corte));
    EXPECT_FALSE(e.datos_listos) << "a reply below the threshold raises nothing";
    llega(bloque.substr(corte, c.llegan - corte));
    EXPECT_EQ(e.respuesta, c.respuesta) << c.umbral;
    EXPECT_EQ(serial.pendientes(), c.quedan);
    EXPECT_TRUE(e.datos_listos && !e.respuesta_lista && plat.cajas.empty());
  }
  EXPECT_TRUE(modo_de_siempre());
}

TEST_F(recepcion, reset_opens_the_chip_again_and_a_second_one_breaks_off) {
  contesta("c", marco("1RESET") + "viejo");
  EXPECT_EQ(
      plat.cajas,
      (std::vector<caja>{{"Atención", "Se ha recibido una señal de RESET", botones::Aceptar, icono::informacion}}));
  EXPECT_EQ(lejos.comandos, (std::vector<std::string>{"c", "A"}));
  EXPECT_TRUE(e.spera_resp.Enabled() && !e.respuesta_lista && serial.pendientes() == 0);
  llega(marco("7RESET"));
  EXPECT_TRUE(e.corte.interrumpida && lejos.comandos.size() == 2u);
}

TEST_F(recepcion, the_fourth_box_of_an_operation_breaks_it_off) {
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(e.corte.interrumpida, i == 4);
    contesta("c", marco("6"));
  }
  EXPECT_EQ(plat.cajas.size(), 4u) << "nothing is shown any more";
}

TEST_F(recepcion, every_pass_ends_against_babble) {
  plat.paciencia = 1000;
  enviar_comando(e, "c");
  for (const char c : {'x', '\x02'}) {
    lejos.balbuceo = c;
    for (int i = 0; i < 200; ++i) plat.DoEvents();
    EXPECT_FALSE(e.respuesta_lista);
    EXPECT_LE(e.respuesta.size(), 4096u);
  }
}

}  // namespace
