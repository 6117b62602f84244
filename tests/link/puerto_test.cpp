#include "apoyo/banco_enlace.h"

using namespace morvane;
using namespace apoyo;

namespace {

using puerto = banco_enlace;

constexpr const char* caja_a = "Debe escribir un puerto válido, o seleccionar uno de la lista";

TEST_F(puerto, each_check_has_its_own_box) {
  const struct {
    const char* nombre;
    const char* velocidad;
    bool hay, ocupado;
    caja esperada;
  } casos[] = {
      {"", "57600", true, false, {"Atención", caja_a}},
      {"COM", "57600", true, false, {"Atención", caja_a}},
      {"COM12", "57600", true, false, {"Atención", caja_a}},
      {"COMx", "57600", true, false, {"Atención", caja_a}},
      {"LPT1", "57600", true, false, {"Atención", caja_a}},
      {"CñM", "57600", true, false, {"Atención", caja_a}},
      {"COM1",
       "57600",
       false,
       false,
       {"Atención", "Es probable que el puerto no exista, verifique en su Sistema Operativo los puertos existentes"}},
      {"COM1",
       "rápido",
       true,
       false,
       {"Atención ocurrió un error",
        "Verifique los valores de: Velocidad de transmisión, Bit de paridad, Bits de datos y bit de parada"}},
      {"COM1", "57600", true, true, {"Atención", "El puerto ya ha sido utilizado por otra aplicación"}},
  };
  for (const auto& c : casos) {
    e.valores.puerto = c.nombre;
    e.valores.velocidad = c.velocidad;
    linea.hay_puerto = c.hay;
    linea.ocupado = c.ocupado;
    caja esperada = c.esperada;
    esperada.dibujo = icono::exclamacion;
    EXPECT_FALSE(abrir_puerto(e));
    EXPECT_EQ(ultima(), esperada) << c.nombre;
    EXPECT_FALSE(serial.PortOpen());
  }
}

TEST_F(puerto, a_second_opening_is_refused_and_disturbs_nothing) {
  abrir();
  interrumpir(e);
  EXPECT_FALSE(abrir_puerto(e));
  EXPECT_EQ(ultima().texto, "El puerto ya está siendo utilizado por otra aplicación");
  EXPECT_TRUE(serial.PortOpen() && e.corte.interrumpida);
  cerrar_puerto(e);
  cerrar_puerto(e);
  e.valores.puerto = "com7";
  EXPECT_TRUE(abrir_puerto(e));
  EXPECT_FALSE(e.corte.interrumpida);
}

TEST_F(puerto, the_fields_are_joined_as_they_stand) {
  e.valores = {"1200,", "E,", "7,", "2", "COM1", e.valores.ruta_aplicacion};
  abrir();
  EXPECT_EQ(linea.linea(), (parametros_linea{1200, 'e', 7, 4}));
}

TEST_F(puerto, closing_keeps_the_mode_and_stops_the_watchdog) {
  abrir();
  serial.InputLen(0);
  serial.RThreshold(5);
  e.spera_resp.Enabled(true);
  cerrar_puerto(e);
  EXPECT_TRUE(serial.InputLen() == 0 && serial.RThreshold() == 5 && !e.spera_resp.Enabled() && !linea.abierta());
}

TEST_F(puerto, a_broken_operation_ends_with_one_box_unless_the_user_wants_to_leave) {
  abrir();
  interrumpir(e);
  cerrar_orden(e);
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención", texto_interrumpida, botones::Aceptar, icono::critico}}));
  abrir();
  interrumpir(e);
  e.peticiones_cierre = 1;
  cerrar_orden(e);
  EXPECT_EQ(plat.cajas.size(), 1u);
}

TEST_F(puerto, settings_are_read_as_far_as_they_go_and_left_alone) {
  const std::string iniciales = "57600/n/8/1/COM1";
  const struct {
    std::string texto, leidos;
  } casos[] = {
      {"\"115200\",\"e\",\"7\",\"2\"\r\n\"COM3\"\r\n", "115200/e/7/2/COM3"},
      {"\"115200\",\"e\",\"7\",\"2\"\n\"COM3\"", "115200/e/7/2/COM3"},
      {"\"9600,\",\"n,\",\"8,\",\"1\"\r\n\"COM2\"\r\n", "9600,/n,/8,/1/COM2"},
      {"\"9600\",\"e\",\"7\",\"2\"\r\n", "9600/e/7/2/COM1"},
      {"\"9600\",\"e\"\r\n\"COM4\"\r\n", "9600/e/8/1/COM4"},
      {"9600 , o\r\nCOM4\r\n", "9600/o/8/1/COM4"},
      {"\"9600", "9600/n/8/1/COM1"},
      {"\r\n", iniciales},
      {std::string(300, '\0'), std::string(300, '\0') + "/n/8/1/COM1"},
  };
  for (const auto& c : casos) {
    dir.escribir("settings.txt", c.texto);
    leer_ajustes(e);
    const ajustes& a = e.valores;
    EXPECT_EQ(a.velocidad + "/" + a.paridad + "/" + a.bits_datos + "/" + a.bits_parada + "/" + a.puerto, c.leidos);
    EXPECT_EQ(dir.leer("settings.txt"), c.texto);
  }
}

TEST_F(puerto, settings_that_cannot_be_read_change_nothing) {
  dir.escribir("SETTINGS.TXT", std::string(2 << 20, 'x'));
  e.valores.puerto = "COM7";
  leer_ajustes(e);
  EXPECT_EQ(e.valores.puerto, "COM7");
  EXPECT_EQ(plat.cajas.size(), 1u);
}

TEST_F(puerto, an_empty_settings_file_is_filled_and_a_missing_one_is_not_made) {
  e.valores.puerto = "";
  leer_ajustes(e);
  guardar_ajustes(e);
  EXPECT_EQ(e.valores.puerto, "");
  EXPECT_FALSE(std::filesystem::exists(dir.ruta() / "SETTINGS.TXT"));
  dir.escribir("SETTINGS.TXT", "");
  leer_ajustes(e);
  EXPECT_EQ(e.valores.puerto, "COM1");
  EXPECT_EQ(dir.leer("SETTINGS.TXT"), "\"57600\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n");
}

TEST_F(puerto, abrir_fichero_opens_makes_and_complains_as_its_modes_say) {
  const std::string ruta = e.valores.ruta_aplicacion;
  EXPECT_FALSE(abrir_fichero(e, ruta, "falta.txt", modo_fichero::leer));
  EXPECT_FALSE(abrir_fichero(e, ruta, "falta.txt", modo_fichero::anadir));
  EXPECT_TRUE(plat.cajas.empty());

  dir.escribir("Hay.TXT", "viejo\r\n");
  abrir_fichero(e, ruta, "hay.txt", modo_fichero::anadir)->linea("más");
  EXPECT_EQ(dir.leer("Hay.TXT"), "viejo\r\nmás\r\n");
  abrir_fichero(e, ruta, "hay.txt", modo_fichero::escribir)->linea("nuevo");
  EXPECT_EQ(dir.leer("Hay.TXT"), "nuevo\r\n");
  EXPECT_TRUE(abrir_fichero(e, ruta, "otro.txt", modo_fichero::escribir));

  EXPECT_FALSE(abrir_fichero(e, "C:\\Datos\\", "memoria.txt", modo_fichero::escribir));
  EXPECT_EQ(ultima(), (caja{"Atención",
                            "Se ha producido el siguiente error: " + std::to_string(ENOENT) +
                                ", al intentar abrir el fichero: C:\\Datos\\\\memoria.txt",
                            botones::Aceptar, icono::critico}));
}

}  // namespace
