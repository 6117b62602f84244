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
};

TEST(checksum, keeps_two_upper_case_digits_drops_the_carry_and_tells_good_frames_from_bad_ones) {
  EXPECT_EQ(suma_comprobacion("\x7F\x7F\x07") + suma_comprobacion("\xFF\xFF"), "05FE");
  EXPECT_TRUE(validar_checksum("030"));
  for (const char* mala : {"031", "0", "00", "0FAb7"}) EXPECT_FALSE(validar_checksum(mala)) << mala;
}

TEST_F(recepcion, status_bits_come_from_their_places_behind_c_alone_and_an_inactive_ezport_leaves_them) {
  const std::tuple<const char*, std::string, const char*> casos[] = {{"c", marco("001"), "1 10000"},
                                                                     {"c", marco("022"), "34 01100"},
                                                                     {"c", marco("0C2"), "194 01011"},
                                                                     {"a", marco("0FF"), "194 01011"},
                                                                     {"c", marco("0FF"), "255 01011"}};
  for (const auto& [comando, respuesta, esperado] : casos) {
    EXPECT_EQ(textos(), "");
    contesta(comando, respuesta);
    std::string bits;
    for (const int bit : {e.bit_wip, e.bit_wen, e.bit_config, e.bit_wef, e.bit_fs}) bits += std::to_string(bit);
    EXPECT_EQ(std::to_string(e.registro_estado) + " " + bits, esperado);
  }
  EXPECT_EQ(textos(), "Verifique la conexión con el dispositivo, y compruebe que el EzPort está activo");
}

TEST_F(recepcion, refusals_show_their_text_and_count_as_replies) {
  for (const char codigo : std::string("Xa123456789")) {
    e.operacion = {};
    contesta("i", marco({codigo}));
    EXPECT_TRUE(e.respuesta_lista) << codigo;
    EXPECT_EQ(e.codigo_respuesta, codigo) << codigo;
    EXPECT_EQ(e.operacion.interrumpida, codigo == 'X' || codigo == 'a') << codigo << ": what is no refusal is no reply";
  }
  EXPECT_EQ(ultima(), critica("Atención respuesta del Chip", "Error parámetros fuera de rango"));
  EXPECT_EQ(textos(),
            "El comando enviado fue demasiado largo|Error en CRC|El comando enviado fue demasiado corto|"
            "El comando enviado tiene un formato incorrecto|El tipo de comando no es soportado por el chip|"
            "Ez Port no está activado|Comando no implementado|Error parámetros fuera de rango");
}

TEST_F(recepcion, a_bad_checksum_is_told_once_and_breaks_off) {
  contesta("a", trama("031") + trama("") + trama("030"));
  EXPECT_EQ(plat.cajas, std::vector{critica(
                            "Atención Error",
                            "Error en la comunicación, el Cheksum ha fallado, verifique la conexión y el cableado")});
  EXPECT_FALSE(e.respuesta_lista);
  EXPECT_TRUE(e.operacion.interrumpida);
}

TEST_F(recepcion, a_trickling_reply_is_held_back_until_it_is_whole_and_noise_does_not_spoil_it) {
  enviar_comando(e, "c");
  for (const char c : "##" + marco("022")) {
    EXPECT_FALSE(e.datos_listos || e.respuesta_lista);
    llega({c});
  }
  EXPECT_TRUE(e.respuesta_lista);
  EXPECT_EQ(e.registro_estado, 0x22);
  contesta("c", "ruido" + marco("002") + "x");
  EXPECT_EQ(e.respuesta, "00292") << "what stands behind the ETX waits for the next one";
}

TEST_F(recepcion, reset_opens_the_chip_again_and_a_second_one_breaks_off) {
  contesta("c", marco("1RESET") + "viejo");
  EXPECT_EQ(textos(), "Se ha recibido una señal de RESET");
  EXPECT_TRUE(e.spera_resp.Enabled());
  EXPECT_FALSE(e.respuesta_lista);
  EXPECT_EQ(serial.pendientes(), 0);
  llega(marco("7RESET"));
  EXPECT_TRUE(e.operacion.interrumpida);
  EXPECT_EQ(lejos.comandos, (std::vector<std::string>{"c", "A"}));
}

}  // namespace
