// Verifications, protection and reset through the main window, frame by frame.

#include "apoyo/banco_principal.h"
#include "flash/verificar.h"
#include "platform/texto.h"

using namespace apoyo;

namespace {

const std::string habilitacion = "a c d2E c a c";
const std::string borrada = "La Flash ha sido verificada, está borrada";
const std::string con_datos = "La Flash contiene datos, no está borrada";
const std::string correcto = "El programa de la Flash ha sido verificado, está correcto";
const std::string difiere = "El programa contenido en la Flash difiere del cargado en el buffer";

std::string bloques(int cuantos) {
  std::string texto;
  for (int i = 0; i < cuantos; ++i) texto += " C" + hex(static_cast<std::uint32_t>(i) * 0x8000, 6) + "007FFF";
  return texto;
}

struct verificacion : banco_principal {
  void SetUp() override { empezar(); }
  /// Lets the board carry out a closing that the command before did not wait for.
  void asentar() {
    plat.pasar(1s);
    lejos.entregar(100, plat.ahora());
  }
  /// Runs a handler from a clean start and gives the commands that the board took.
  std::string correr(void (*orden)(frm_principal&)) {
    asentar();
    lejos.comandos.clear();
    plat.cajas.clear();
    orden(f);
    EXPECT_TRUE(en_reposo());
    return lejos.flujo();
  }
  void llenar(std::uint8_t byte) { std::ranges::fill(lejos.chip.flash(), byte); }
};

TEST_F(verificacion, an_erased_flash_takes_ten_looks_and_the_first_datum_ends_them) {
  const struct {
    std::uint32_t dato;
    int bloques;
  } casos[] = {{0, 0}, {1, 1}, {0x1FFFF, 4}, {0x3FFFF, 8}, {0xFFFFFFFF, 9}};
  for (const auto& c : casos) {
    llenar(0xFF);
    if (c.dato < 0x40000) lejos.chip.flash()[c.dato] = 0x7F;
    const bool limpia = c.dato >= 0x40000;
    EXPECT_EQ(correr(men_verific_t_Click), "A " + habilitacion + " C000000000000" + bloques(c.bloques) + " D");
    EXPECT_EQ(plat.cajas,
              (std::vector<caja>{{"Atención", limpia ? borrada : con_datos, botones::Aceptar, icono::informacion}}));
    EXPECT_EQ(f.progreso.Progress.Value, 0);
  }
}

TEST_F(verificacion, sums_are_compared_up_to_the_block_of_the_top) {
  const struct {
    std::int32_t tope;
    std::uint32_t extrano;
    int bloques;
    bool bien;
  } casos[] = {{0, 0xFFFFFFFF, 1, true},       {0x7FFF, 0xFFFFFFFF, 1, true},  {0x8000, 0xFFFFFFFF, 2, true},
               {0x3FFFF, 0xFFFFFFFF, 8, true}, {0x40001, 0xFFFFFFFF, 8, true}, {99, 0x400, 0, false},
               {99, 0x401, 1, false},          {99, 0x7FFF, 1, false},         {99, 0x8000, 1, true},
               {0x8000, 0xFFFF, 2, false}};
  for (const auto& c : casos) {
    llenar(0xFF);
    limpiar_buffer_salida(v);
    v.dir_max = 0;
    for (const std::int32_t donde : {0, c.tope}) {
      if (c.tope == 0) break;
      poner_byte(v, donde, 0x12);
      if (donde < total_flash) lejos.chip.flash()[static_cast<std::size_t>(donde)] = 0x12;
    }
    if (c.extrano < 0x40000) lejos.chip.flash()[c.extrano] = 0x55;
    EXPECT_EQ(correr(mn_verifi_t_f_Click), "A " + habilitacion + " C000000000400" + bloques(c.bloques) + " D")
        << c.tope;
    EXPECT_EQ(textos(), c.bien ? correcto : difiere) << c.tope << " " << c.extrano;
  }
}

TEST_F(verificacion, the_verdict_comes_where_it_belongs) {
  std::size_t antes = 0;
  int barra = -1;
  plat.responder(vbOK, [&] { antes = lejos.comandos.size(), barra = f.progreso.Progress.Value; });
  correr(mn_verifi_t_f_Click);
  EXPECT_TRUE(lejos.comandos.size() == antes + 1 && barra == 24) << "the port is open under the box";
  plat.responder(vbOK, [&] { antes = lejos.comandos.size(); });
  correr(men_verific_t_Click);
  EXPECT_EQ(lejos.comandos.size(), antes) << "an erased flash is told behind the closing";
}

TEST(sumas, count_both_ends_and_stop_at_the_last_cell) {
  Variables_grab v;
  limpiar_buffer_salida(v);
  EXPECT_EQ(suma_rango(v, 0, 1024), "3FCFF");
  EXPECT_EQ(suma_rango(v, 0, 0x7FFF), "7F8000");
  EXPECT_EQ(suma_rango(v, 0x40000, 0x7FFF), "1FE");
  v.buffer_salida.assign(v.buffer_salida.size(), 0);
  EXPECT_EQ(suma_rango(v, 5, 0), "0");
}

TEST_F(verificacion, no_verdict_without_a_reply_of_its_own) {
  void (*const ordenes[])(frm_principal&) = {men_verific_t_Click, mn_verifi_t_f_Click, men_proteger_f_Click,
                                             men_reset_Click,     men_verifi_t_Click,  men_leer_ft_Click};
  v.dir_max = v.dir_max_grabada = 99;
  for (auto* orden : ordenes) {
    for (std::uint64_t n = 1; n <= 14; ++n) {
      for (const bool muda : {true, false}) {
        llenar(0x55);
        lejos.placa.fallos = {};
        lejos.placa.vaciar();
        (muda ? lejos.placa.fallos.muda_desde : lejos.placa.fallos.suma_mala_en) = lejos.placa.tramas() + n;
        plat.olvidar_respuestas();
        plat.responder(vbCancel);
        correr(orden);
        const std::string dicho = textos();
        const bool interrumpida = dicho.find(texto_interrumpida) != std::string::npos;
        EXPECT_LE(plat.cajas.size(), 3u) << dicho;
        for (const std::string& falso : {borrada, correcto, std::string("Se ha protegido"), std::string("exitosa")}) {
          EXPECT_TRUE(dicho.find(falso) == std::string::npos) << n << dicho;
        }
        EXPECT_TRUE(!interrumpida || dicho.ends_with(texto_interrumpida)) << n << dicho;
      }
    }
  }
}

TEST_F(verificacion, what_an_earlier_cancel_left_gives_no_verdict_and_the_repetition_works) {
  llenar(0xFF);
  plat.tiempo_de_caja = 1s;
  plat.responder(vbCancel);
  lejos.placa.fallos.muda_desde = lejos.placa.tramas() + 1;
  correr(men_borrar_t_Click);
  EXPECT_TRUE(f.link.tiempo_agotado);
  lejos.placa.fallos = {};
  f.link.bit_wen = f.link.bit_config = 1;
  correr(men_verific_t_Click);
  EXPECT_EQ(textos(), texto_interrumpida);
  correr(men_verific_t_Click);
  EXPECT_EQ(textos(), borrada);
}

TEST_F(verificacion, noise_in_front_of_replies_does_not_pass_for_an_erased_flash) {
  for (const unsigned ruido : {1u, 12u, 32u, 47u}) {
    llenar(0xFF);
    lejos.chip.flash()[0x30000] = 0;
    lejos.placa.fallos.ruido = ruido;
    correr(men_verific_t_Click);
    EXPECT_TRUE(textos().find(borrada) == std::string::npos) << ruido << textos();
  }
}

TEST_F(verificacion, a_refused_look_speaks_instead_of_a_verdict) {
  llenar(0xFF);
  lejos.placa.fallos.error_en = lejos.placa.tramas() + 9;
  lejos.placa.fallos.codigo_error = '7';
  correr(men_verific_t_Click);
  EXPECT_EQ(textos(), "Ez Port no está activado|" + texto_interrumpida);
}

TEST_F(verificacion, protection_takes_twelve_frames_and_shows_after_reopening) {
  llenar(0xFF);
  const std::string flujo = "A " + habilitacion + " g000414FFFF4AC8 D A c D";
  EXPECT_EQ(correr(men_proteger_f_Click), flujo);
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención ocurrió un problema", "Se ha protegido la memoria flash!",
                                            botones::Aceptar, icono::informacion}}));
  llenar(0);
  EXPECT_EQ(correr(men_proteger_f_Click), flujo);
  EXPECT_EQ(plat.cajas.back(), critica("Atención ocurrió un problema", "No es posible proteger la memoria flash!"));
}

TEST_F(verificacion, what_a_reset_cut_off_gets_no_verdict) {
  const struct {
    void (*orden)(frm_principal&);
    std::uint64_t trama;
  } casos[] = {{men_proteger_f_Click, 11}, {men_verifi_t_Click, 2}, {men_verifi_t_Click, 3}};
  v.dir_max = v.dir_max_grabada = 99;
  for (const auto& c : casos) {
    llenar(0xFF);
    asentar();
    lejos.placa.fallos.reset_en = lejos.placa.tramas() + c.trama;
    correr(c.orden);
    EXPECT_EQ(textos(), "Se ha recibido una señal de RESET|" + texto_interrumpida);
  }
}

TEST_F(verificacion, reset_takes_seven_frames_and_is_not_sent_unconfirmed) {
  f.barra.ButtonClick(5);
  EXPECT_EQ(lejos.flujo(), "A a c d2E c j D");
  EXPECT_TRUE(plat.cajas.empty());
  lejos.chip.falla_config = true;
  EXPECT_EQ(correr(men_reset_Click), "A a c d2E c D");
  EXPECT_EQ(textos(), texto_sin_config);
}

TEST_F(verificacion, the_byte_comparison_refuses_asks_and_compares) {
  const std::string sin_programa = "Imposible verificar, no ha cargado ningún programa en el buffer";
  const std::string sin_grabar = "No se ha programado la flash en esta sesión, desea verificar de todas formas";
  const std::string otro =
      "          Es posible que la informacion cargada en el buffer sea diferente de la flash\n\r"
      "Debe abrir el archivo que corresponda al programa de la flash o programar nuevamente la flash";
  const std::string e0 = "A e00000016 e00001016", exito = "La verificación ha sido exitosa";
  const struct {
    std::int32_t cargada, grabada;
    std::uint32_t extrano;
    respuesta_caja respuesta;
    std::string flujo, dicho;
  } casos[] = {
      {0, 0, 0x40000, vbOK, "A", sin_programa},
      {0, 9, 0x40000, vbOK, "A", sin_programa},
      {9, 8, 0x40000, vbOK, "A", otro},
      {9, 0, 0x40000, vbCancel, "A", sin_grabar},
      {16, 0, 0x40000, vbOK, e0 + " D", sin_grabar + "|" + exito},
      {16, 16, 16, vbOK, e0 + " D", exito},
      {17, 17, 16, vbOK, e0 + " e00002016 D", "Los datos no coinciden"},
      {16, 16, 15, vbOK, e0 + " D", "Los datos no coinciden"},
  };
  limpiar_buffer_salida(v);
  for (const auto& c : casos) {
    llenar(0xFF);
    if (c.extrano < 0x40000) lejos.chip.flash()[c.extrano] = 0;
    v.dir_max = c.cargada;
    v.dir_max_grabada = c.grabada;
    plat.olvidar_respuestas();
    plat.responder(c.respuesta);
    EXPECT_EQ(correr(men_verifi_t_Click), c.flujo);
    EXPECT_EQ(textos(), c.dicho);
  }
}

}  // namespace
