#include "apoyo/banco.h"
#include "apoyo/guion.h"

using namespace apoyo;

namespace {

using puerto = banco_enlace<guion>;

TEST_F(puerto, only_a_port_of_one_digit_and_a_line_that_makes_sense_are_tried) {
  for (const char* nombre : {"", "COM12", "COMx", "LPT1", "CñM"}) {
    e.valores.puerto = nombre;
    EXPECT_FALSE(abrir_puerto(e));
    EXPECT_EQ(ultima(), (caja{"Atención", texto_no_es_puerto, botones::Aceptar, icono::exclamacion})) << nombre;
  }
  e.valores.puerto = "com7";
  e.valores.velocidad = "1x";
  EXPECT_FALSE(abrir_puerto(e) || serial.PortOpen());
  EXPECT_EQ(ultima(),
            (caja{"Atención ocurrió un error",
                  "Verifique los valores de: Velocidad de transmisión, Bit de paridad, Bits de datos y bit de "
                  "parada",
                  botones::Aceptar, icono::exclamacion}));
}

TEST_F(puerto, settings_are_read_as_far_as_they_go_and_only_an_empty_file_is_filled) {
  const std::pair<std::string, const char*> casos[] = {
      {"\"9600,\",\"n,\",\"8,\",\"1\"\r\n\"COM2\"\r\n", "9600,/n,/8,/1/COM2"},
      {"\"9600\",\"e\"\n\"COM4\"", "9600/e/8/1/COM4"},
      {"9600 , o\r\nCOM4\r\n", "9600/o/8/1/COM4"},
      {"\"9600", "9600/n/8/1/COM1"},
      {"", "57600/n/8/1/COM1"},
      {"57\"600,n\r\n\"COM4\"", "57600/n/8/1/COM4"},
      {std::string(256, '5') + "\r\nCOM4", "57600/n/8/1/COM4"},
  };
  for (const auto& [texto, leidos] : casos) {
    dir.escribir("settings.txt", texto);
    leer_ajustes(e);
    const ajustes& a = e.valores;
    EXPECT_EQ(a.velocidad + "/" + a.paridad + "/" + a.bits_datos + "/" + a.bits_parada + "/" + a.puerto, leidos);
    EXPECT_EQ(dir.leer("settings.txt"), texto.empty() ? "\"57600\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n" : texto);
  }
  dir.escribir("settings.txt", std::string(2 << 20, 'x'));
  leer_ajustes(e);
  EXPECT_EQ(e.valores.puerto, "COM4") << "what cannot be read changes nothing";
  EXPECT_EQ(plat.cajas.size(), 1U) << "what cannot be read changes nothing";
}

}  // namespace
