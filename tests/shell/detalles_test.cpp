// What stands under the boxes, and what stays of a command on the bar.

#include "banco_ordenes.h"
#include "shell/estimador.h"

using namespace apoyo;

namespace {

struct detalles_test : banco_ordenes {
  /// Under the last box of a command.
  std::string debajo_tras(orden cual, const puente::faltas& mal = {}) {
    plat.explicaciones.clear();
    correr(cual, mal);
    return plat.explicaciones.empty() ? "" : plat.explicaciones.back();
  }
  std::string en_la_barra() const {
    estimador e;
    e.acabar(f.avance.labor);
    return e.dicho().breve;
  }
};

TEST_F(detalles_test, each_trouble_is_told_with_what_is_known_of_it) {
  f.describir_puerto = [] { return "COM1: /dev/ttyS9"; };
  const std::string puerto = "\nCOM1: /dev/ttyS9, a 57600 baudios\n";
  const std::string se_borraba = "Se estaba borrando: no se sabe qué hay en la flash, y hay que borrarla otra vez";
  const std::string enviado = "✓ Correcto: enviado 000100–000107; falta comprobarlo con «Chequear lo Programado»";
  const std::string una =
      "⚠ Atención: 1 palabra sin confirmar, marcadas en el mapa: puede que no estén escritas. "
      "Compruébelo con «Chequear lo Programado»";
  const struct {
    orden cual;
    puente::faltas mal;
    std::string dicho, barra;
  } casos[] = {
      {men_borrar_t_Click,
       {},
       "✓ Correcto: el chip dice que ha borrado; lo comprueba «Verificar Borrado»",
       "Borrado en < 0,1 s"},
      {men_prog_t_Click, {}, enviado, "Grabado en < 0,1 s"},
      {men_leer_ft_Click, {}, "✓ Correcto: leído 000000–00013F", "Leído en 0,1 s"},
      {men_reset_Click, {}, "", "Reset enviado"},
      {men_prog_t_Click,
       {.muda_desde = 1},
       "✗ Falla: no hay respuesta a «A» (abrir el chip)" + puerto +
           "No ha llegado ningún carácter: compruebe el cable, "
           "la alimentación y que este es el puerto de la placa",
       "Reset enviado"},
      {men_prog_t_Click,
       {.cortada_en = 2, .cortada_tras = 3},
       "✗ Falla: se ha dejado de esperar" + puerto + "No se había empezado a borrar: la flash no se ha tocado",
       "Interrumpido"},
      {men_prog_t_Click,
       {.suma_mala_en = 9},
       "✗ Falla: una respuesta llegó dañada" + puerto + se_borraba,
       "Interrumpido"},
      {men_borrar_t_Click,
       {.cuelga_en = 9},
       "✗ Falla: el dispositivo ha desaparecido" + puerto + se_borraba,
       "Interrumpido"},
      {men_prog_t_Click,
       {.muda_desde = 19},
       "✗ Falla: se ha dejado de esperar" + puerto + "Se iba a grabar: no se sabe si se ha escrito algo",
       "Interrumpido en 000100"},
      {men_prog_t_Click, {.error_en = 18}, una, "Grabado, 1 sin confirmar"},
      {men_prog_t_Click, {.error_en = 19}, una, "Grabado, 1 sin confirmar"},
      {men_prog_t_Click,
       {.reset_en = 19},
       "✗ Falla: rechazado con el código 7 el comando «D» (cerrar el chip)",
       "Grabado, 2 sin confirmar"},
      {men_leer_ft_Click,
       {.eco_desde = 2},
       "✗ Falla: lo que ha llegado no contesta a lo que se envió" + puerto +
           "Se estaba leyendo, en 000000: la flash no se ha tocado",
       "Interrumpido en 000000"},
  };
  for (const auto& c : casos) {
    EXPECT_EQ(debajo_tras(c.cual, c.mal), c.dicho);
    EXPECT_EQ(en_la_barra(), c.barra);
  }
  llenar(0);
  EXPECT_EQ(debajo_tras(mn_verifi_t_f_Click),
            "✗ Falla: difiere 000000–000400: la suma del archivo es 0003F42C y la del chip 00000000\n"
            "Más arriba no se ha mirado; qué bytes son, se ve leyendo la memoria y comparando los buffer");
  EXPECT_EQ(en_la_barra(), "Distinto en 000000–000400");
  EXPECT_EQ(debajo_tras(men_verific_t_Click), "✗ Falla: hay datos en 000000; más arriba no se ha mirado");
  EXPECT_EQ(en_la_barra(), "Con datos en 000000");
  f.link.valores.puerto = "COM";
  EXPECT_EQ(debajo_tras(men_borrar_t_Click), "✗ Falla: el puerto escrito es «COM»; ha de ser de COM0 a COM9");
}

TEST_F(detalles_test, closing_asks_once_while_the_chip_would_be_left_half_done) {
  EXPECT_TRUE(desea_cerrar(f));
  bool primera = true;
  tras(20, [&] {
    plat.responder(vbNo);
    primera = desea_cerrar(f);
    pedir_cierre(f);
    EXPECT_TRUE(desea_cerrar(f)) << "who has asked already is not asked again";
  });
  men_prog_t_Click(f);
  EXPECT_FALSE(primera);
  ASSERT_EQ(plat.cajas.size(), 1U);
  EXPECT_EQ(plat.cajas.front().texto, "Se está grabando el chip. ¿Desea cerrar el programa y dejarlo a medias?");
}

TEST_F(detalles_test, a_load_tells_what_it_took_and_what_not_and_so_do_the_verdicts) {
  const auto cargar = [this](const char* nombre, const std::string& contenido) {
    plat.explicaciones.clear();
    abrir_soltado(f, dir.escribir(nombre, contenido));
    estimador e;
    e.cargada(f.v.carga);
    return std::pair(plat.explicaciones.empty() ? "" : plat.explicaciones.back(), e.dicho().breve);
  };
  const std::string uno = "S107010001020304ED\r\n", config = "S10503FEAABB94\r\nS1050400AABB91\r\n";
  EXPECT_EQ(
      cargar("a.s19", "S0030000FC\r\n" + uno + "S9030000FC\r\n"),
      std::pair(std::string("✓ Correcto: 1 registro, 4 bytes en 000100–000103"), std::string("4 B, 000100–000103")));
  EXPECT_EQ(cargar("b.s19", "hola\r\n" + uno + "s107010401020304E9\r\n:00000001FF\r\nS107010801020304FF\r\n" + config),
            std::pair(std::string(
                          "⚠ Atención: 4 registros, 12 bytes en 000100–000401, en 3 tramos; 3 líneas pasadas por alto\n"
                          "⚠ 2 líneas parecen de datos y no se han tomado (la primera, línea 3)\n"
                          "⚠ 1 registro tiene mal la suma o la longitud y se ha tomado como está (línea 5)\n"
                          "⚠ 2 bytes del archivo en 000400–00041F no se graban: ahí va 00"),
                      std::string("12 B, 000100–000401")));
  EXPECT_NE(debajo_tras(men_prog_t_Click).find("\n⚠ Del archivo: 2 líneas parecen"), std::string::npos);
  EXPECT_EQ(cargar("c.txt", uno).second, "Nada cargado: tipo desconocido");
  EXPECT_EQ(cargar("d.s19", "S1070\r\n").second, "Nada cargado: archivo dañado");
  EXPECT_EQ(cargar("e.bin", "abc").second, "5 B, 000000–000004");
}

}  // namespace
