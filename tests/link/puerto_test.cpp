#include "apoyo/banco.h"
#include "apoyo/guion.h"

using namespace apoyo;

namespace {

using puerto = banco_enlace<guion>;

TEST_F(puerto, each_check_has_its_own_box) {
  const struct {
    const char *nombre, *velocidad;
    bool hay, ocupado;
    std::string texto;
  } casos[] = {
      {"", "57600", true, false, texto_no_es_puerto},     {"COM12", "57600", true, false, texto_no_es_puerto},
      {"COMx", "57600", true, false, texto_no_es_puerto}, {"LPT1", "57600", true, false, texto_no_es_puerto},
      {"CñM", "57600", true, false, texto_no_es_puerto},  {"COM1", "57600", false, false, texto_no_hay_puerto},
      {"com7", "1x", true, false, texto_mala_velocidad},  {"COM1", "57600", true, true, texto_en_otra_aplicacion},
  };
  for (const auto& c : casos) {
    e.valores.puerto = c.nombre;
    e.valores.velocidad = c.velocidad;
    linea.hay_puerto = c.hay;
    linea.ocupado = c.ocupado;
    EXPECT_FALSE(abrir_puerto(e) || serial.PortOpen());
    const char* titulo = c.texto == texto_mala_velocidad ? "Atención ocurrió un error" : "Atención";
    EXPECT_EQ(ultima(), (caja{titulo, c.texto, botones::Aceptar, icono::exclamacion})) << c.nombre;
  }
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
}

TEST_F(puerto, settings_that_cannot_be_read_change_nothing) {
  e.valores.puerto = "COM7";
  dir.escribir("SETTINGS.TXT", std::string(2 << 20, 'x'));
  leer_ajustes(e);
  EXPECT_TRUE(e.valores.puerto == "COM7" && plat.cajas.size() == 1);
}

}  // namespace
