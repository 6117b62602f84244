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
      {"", "57600", true, false, texto_no_es_puerto},        {"COM12", "57600", true, false, texto_no_es_puerto},
      {"COMx", "57600", true, false, texto_no_es_puerto},    {"LPT1", "57600", true, false, texto_no_es_puerto},
      {"CñM", "57600", true, false, texto_no_es_puerto},     {"COM1", "57600", false, false, texto_no_hay_puerto},
      {"COM1", "rápido", true, false, texto_mala_velocidad}, {"COM1", "57600", true, true, texto_en_otra_aplicacion},
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

TEST_F(puerto, a_second_opening_is_refused_and_disturbs_nothing) {
  reabrir();
  interrumpir(e);
  EXPECT_FALSE(abrir_puerto(e));
  EXPECT_EQ(textos(), texto_ocupado);
  EXPECT_TRUE(serial.PortOpen() && e.corte.interrumpida);
  e.spera_resp.Enabled(true);
  cerrar_puerto(e);
  cerrar_puerto(e);
  EXPECT_FALSE(linea.abierta() || e.spera_resp.Enabled());
  e.valores = {"1200,", "E,", "7,", "2", "com7", e.valores.ruta_aplicacion};
  EXPECT_TRUE(abrir_puerto(e) && !e.corte.interrumpida);
  EXPECT_EQ(linea.linea(), (parametros_linea{1200, 'e', 7, 4})) << "the fields are joined as they stand";
}

TEST_F(puerto, a_broken_operation_ends_with_one_box_unless_the_user_wants_to_leave) {
  for (const int peticiones : {0, 1}) {
    reabrir();
    interrumpir(e);
    e.peticiones_cierre = peticiones;
    cerrar_orden(e);
    EXPECT_EQ(plat.cajas, std::vector<caja>(1 - peticiones, critica("Atención", texto_interrumpida)));
  }
}

TEST_F(puerto, settings_are_read_as_far_as_they_go_and_left_alone) {
  const struct {
    std::string texto, leidos;
  } casos[] = {
      {"\"115200\",\"e\",\"7\",\"2\"\n\"COM3\"", "115200/e/7/2/COM3"},
      {"\"9600,\",\"n,\",\"8,\",\"1\"\r\n\"COM2\"\r\n", "9600,/n,/8,/1/COM2"},
      {"\"9600\",\"e\",\"7\",\"2\"\r\n", "9600/e/7/2/COM1"},
      {"\"9600\",\"e\"\r\n\"COM4\"\r\n", "9600/e/8/1/COM4"},
      {"9600 , o\r\nCOM4\r\n", "9600/o/8/1/COM4"},
      {"\"9600", "9600/n/8/1/COM1"},
      {"\r\n", "57600/n/8/1/COM1"},
      {"57\"600,n\r\n\"COM4\"", "57600/n/8/1/COM4"},
      {std::string(300, '\0'), "57600/n/8/1/COM1"},
      {std::string(256, '5') + "\r\nCOM4", "57600/n/8/1/COM4"},
  };
  for (const auto& c : casos) {
    dir.escribir("settings.txt", c.texto);
    leer_ajustes(e);
    const ajustes& a = e.valores;
    EXPECT_EQ(a.velocidad + "/" + a.paridad + "/" + a.bits_datos + "/" + a.bits_parada + "/" + a.puerto, c.leidos);
    EXPECT_EQ(dir.leer("settings.txt"), c.texto);
  }
}

TEST_F(puerto, settings_that_are_missing_or_cannot_be_read_change_nothing_and_empty_ones_are_filled) {
  e.valores.puerto = "COM7";
  leer_ajustes(e);
  guardar_ajustes(e);
  EXPECT_FALSE(std::filesystem::exists(dir.ruta() / "SETTINGS.TXT"));
  EXPECT_EQ(textos(), "");
  dir.escribir("SETTINGS.TXT", std::string(2 << 20, 'x'));
  leer_ajustes(e);
  EXPECT_EQ(e.valores.puerto, "COM7");
  EXPECT_EQ(plat.cajas.size(), 1u);
  dir.escribir("SETTINGS.TXT", "");
  leer_ajustes(e);
  EXPECT_EQ(e.valores.puerto, "COM1");
  EXPECT_EQ(dir.leer("SETTINGS.TXT"), "\"57600\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n");
}

TEST_F(puerto, abrir_fichero_opens_makes_and_complains_as_its_modes_say) {
  const std::string ruta = e.valores.ruta_aplicacion;
  EXPECT_FALSE(abrir_fichero(e, ruta, "falta.txt", modo_fichero::leer));
  EXPECT_FALSE(abrir_fichero(e, ruta, "falta.txt", modo_fichero::anadir));
  EXPECT_TRUE(plat.cajas.empty() && abrir_fichero(e, ruta, "otro.txt", modo_fichero::escribir));

  dir.escribir("Hay.TXT", "viejo\r\n");
  abrir_fichero(e, ruta, "hay.txt", modo_fichero::anadir)->linea("más");
  EXPECT_EQ(dir.leer("Hay.TXT"), "viejo\r\nmás\r\n");
  abrir_fichero(e, ruta, "hay.txt", modo_fichero::escribir)->linea("nuevo");
  EXPECT_EQ(dir.leer("Hay.TXT"), "nuevo\r\n");

  EXPECT_FALSE(abrir_fichero(e, "C:\\Datos\\", "memoria.txt", modo_fichero::escribir));
  EXPECT_EQ(ultima(), critica("Atención", "Se ha producido el siguiente error: " + std::to_string(ENOENT) +
                                              ", al intentar abrir el fichero: C:\\Datos\\\\memoria.txt"));
}

}  // namespace
