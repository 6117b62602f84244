#include "link/recepcion.h"

#include "apoyo/banco_enlace.h"

using namespace morvane;
using namespace apoyo;

namespace {

struct recepcion : banco_enlace {
  /// Puts a text on the line and lets the pump deliver it.
  void llega(const std::string& texto) {
    lejos.poner(texto, plat.ahora());
    plat.DoEvents();
  }
};

TEST_F(recepcion, status_bits_come_from_their_places) {
  abrir();
  const struct {
    const char* digitos;
    int estado, wip, wen, config, wef, fs;
  } casos[] = {{"82", 0x82, 0, 1, 0, 0, 1}, {"1C", 0x1C, 0, 0, 0, 0, 0}, {"01", 0x01, 1, 0, 0, 0, 0},
               {"22", 0x22, 0, 1, 1, 0, 0}, {"40", 0x40, 0, 0, 0, 1, 0}, {"2G", 0x02, 0, 1, 0, 0, 0},
               {"ZZ", 0x00, 0, 0, 0, 0, 0}};
  for (const auto& c : casos) {
    enviar_comando(e, "c");
    llega(marco(std::string("0") + c.digitos));
    EXPECT_TRUE(e.respuesta_lista);
    EXPECT_EQ(e.registro_estado, c.estado) << c.digitos;
    EXPECT_EQ((std::array{e.bit_wip, e.bit_wen, e.bit_config, e.bit_wef, e.bit_fs}),
              (std::array<std::uint8_t, 5>{std::uint8_t(c.wip), std::uint8_t(c.wen), std::uint8_t(c.config),
                                           std::uint8_t(c.wef), std::uint8_t(c.fs)}))
        << c.digitos;
  }
}

TEST_F(recepcion, an_inactive_ezport_is_told_and_the_bits_stay) {
  abrir();
  enviar_comando(e, "c");
  llega(marco("082"));
  enviar_comando(e, "c");
  llega(marco("0FF"));
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención",
                                            "Verifique la conexión con el dispositivo, y compruebe que el EzPort está "
                                            "activo",
                                            botones::Aceptar, icono::critico}}));
  EXPECT_EQ(e.registro_estado, 0xFF);
  EXPECT_TRUE(e.bit_wen == 1 && e.bit_fs == 1 && e.respuesta_lista);
}

TEST_F(recepcion, only_a_reply_behind_c_is_a_status) {
  abrir();
  enviar_comando(e, "a");
  llega(marco("0FF"));
  EXPECT_TRUE(plat.cajas.empty());
  enviar_comando(e, "c");
  llega(hecho);
  EXPECT_EQ(e.registro_estado, 0x30);
  EXPECT_TRUE(e.bit_config == 1 && e.bit_wen == 0);
  enviar_comando(e, "c");
  llega(marco("0RESET"));
  EXPECT_TRUE(plat.cajas.empty()) << "the code 0 makes it a plain success";
}

TEST_F(recepcion, refusals_show_their_text_and_count_as_replies) {
  const std::pair<char, const char*> casos[] = {{'1', ""},
                                                {'2', "El comando enviado fue demasiado largo"},
                                                {'3', "Error en CRC"},
                                                {'4', "El comando enviado fue demasiado corto"},
                                                {'5', "El comando enviado tiene un formato incorrecto"},
                                                {'6', "El tipo de comando no es soportado por el chip"},
                                                {'7', "Ez Port no está activado"},
                                                {'8', "Comando no implementado"},
                                                {'9', "Error parámetros fuera de rango"}};
  for (const auto& [codigo, texto] : casos) {
    abrir();
    enviar_comando(e, "i");
    llega(marco(std::string(1, codigo)));
    EXPECT_EQ(ultima(), (caja{"Atención respuesta del Chip", texto, botones::Aceptar, icono::critico}));
    EXPECT_TRUE(e.respuesta_lista && e.codigo_respuesta == codigo && !e.corte.interrumpida);
    cerrar_puerto(e);
  }
  abrir();
  const std::size_t antes = plat.cajas.size();
  enviar_comando(e, "i");
  llega(marco("X"));
  EXPECT_EQ(plat.cajas.size(), antes);
  EXPECT_TRUE(e.respuesta_lista);
}

TEST_F(recepcion, a_bad_checksum_is_told_once_and_breaks_off) {
  const std::string casos[] = {
      "\x02"
      "031\x03",
      "\x02\x03", "\x03",
      "\x02"
      "02b74\x03",
      "\x02"
      "00Aa1\x03"};
  for (const std::string& trama : casos) {
    abrir();
    plat.cajas.clear();
    enviar_comando(e, "a");
    llega(trama + trama + hecho);
    EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención Error", texto_cheksum, botones::Aceptar, icono::critico}}));
    EXPECT_TRUE(!e.respuesta_lista && e.corte.interrumpida);
    cerrar_puerto(e);
  }
}

TEST_F(recepcion, characters_outside_of_a_frame_do_not_spoil_it) {
  abrir();
  enviar_comando(e, "c");
  llega("ruido" + marco("002") + "x");
  EXPECT_TRUE(e.respuesta_lista && plat.cajas.empty());
  EXPECT_EQ(e.respuesta, "00292") << "what stands behind the ETX waits for the next one";
  llega("yz" + marco("020"));
  EXPECT_EQ(e.registro_estado, 0x20);
}

TEST_F(recepcion, a_reply_that_trickles_in_is_held_back_until_it_is_whole) {
  abrir();
  enviar_comando(e, "c");
  const std::string trama = "##" + marco("022");
  for (std::size_t i = 0; i + 1 < trama.size(); ++i) {
    llega(trama.substr(i, 1));
    ASSERT_FALSE(e.datos_listos) << i;
  }
  EXPECT_EQ(serial.pendientes(), trama.size() - 1);
  llega(trama.substr(trama.size() - 1));
  EXPECT_TRUE(e.datos_listos && e.respuesta_lista && e.bit_wen == 1 && e.bit_config == 1);
}

TEST_F(recepcion, fixed_lengths_cut_their_slices_and_test_nothing) {
  abrir();
  const std::string bloque =
      "\x02"
      "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghij\x03";
  const struct {
    int input_len, umbral;
    std::string llega, respuesta;
    std::size_t queda;
  } casos[] = {{0, 5, bloque.substr(0, 5), "012", 0},
               {0, 5, bloque.substr(0, 9), "012", 0},
               {15, 15, bloque.substr(0, 17), bloque.substr(0, 15), 2},
               {0, 16, bloque.substr(0, 20), "456789AB", 0},
               {47, 47, bloque.substr(0, 47), bloque.substr(0, 47), 0},
               {0, 47, bloque, bloque, 0}};
  for (const auto& c : casos) {
    const modo_fijo modo(serial, c.input_len, c.umbral);
    enviar_comando(e, "a");
    serial.descartar_entrada();
    llega(c.llega.substr(0, static_cast<std::size_t>(c.umbral) - 1));
    EXPECT_FALSE(e.datos_listos) << "a reply below the threshold raises nothing";
    llega(c.llega.substr(static_cast<std::size_t>(c.umbral) - 1));
    EXPECT_EQ(e.respuesta, c.respuesta) << c.umbral;
    EXPECT_EQ(serial.pendientes(), c.queda);
    EXPECT_TRUE(e.datos_listos && !e.respuesta_lista && plat.cajas.empty());
  }
  EXPECT_TRUE(serial.InputLen() == 1 && serial.RThreshold() == 1);
}

TEST_F(recepcion, reset_opens_the_chip_again_and_a_second_one_breaks_off) {
  abrir();
  enviar_comando(e, "c");
  llega(marco("1RESET") + "viejo");
  EXPECT_EQ(
      plat.cajas,
      (std::vector<caja>{{"Atención", "Se ha recibido una señal de RESET", botones::Aceptar, icono::informacion}}));
  EXPECT_EQ(lejos.comandos, (std::vector<std::string>{"c", "A"}));
  EXPECT_TRUE(e.spera_resp.Enabled() && !e.respuesta_lista && serial.pendientes() == 0);
  llega(marco("7RESET"));
  EXPECT_TRUE(e.corte.interrumpida);
  EXPECT_EQ(lejos.comandos.size(), 2u);
}

TEST_F(recepcion, the_fourth_box_of_an_operation_breaks_it_off) {
  abrir();
  for (int i = 0; i < 4; ++i) {
    EXPECT_FALSE(e.corte.interrumpida) << i;
    enviar_comando(e, "c");
    llega(marco("6"));
  }
  EXPECT_TRUE(e.corte.interrumpida);
  llega(marco("6"));
  EXPECT_EQ(plat.cajas.size(), 4u) << "nothing is shown any more";
}

TEST_F(recepcion, a_send_event_moves_nothing) {
  serial_OnComm(e);
  EXPECT_FALSE(e.datos_listos || e.respuesta_lista);
}

TEST_F(recepcion, every_pass_ends_against_babble) {
  abrir();
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
