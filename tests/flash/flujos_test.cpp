#include <algorithm>

#include "apoyo/banco.h"
#include "apoyo/guion.h"
#include "apoyo/placa_lejos.h"
#include "flash/borrar.h"
#include "flash/grabar.h"
#include "flash/habilitar.h"

using namespace apoyo;

namespace {

const std::string habilitacion = "a c d2E c a c";
const char* const titulo_problema = "Atención ocurrió un problema";
const std::string texto_sin_borrar = "Error al borrar la Flash, se ha detenido la acción de borrar";

/// The flows against the simulated board, with the port open and the chip taking commands.
struct flujos : banco_enlace<placa_lejos> {
  flujos() {
    dir.escribir("unidades/c/Datos/TORVAX-m68k/memoria.txt", "");
    limpiar_buffer_salida(v);
    empezar();
  }
  /// Opens port and chip anew, with a board that is well and a flash full of `relleno`.
  void empezar(std::uint8_t relleno = 0, bool protegida = false) {
    lejos.placa.fallos = {};
    lejos.placa.vaciar();
    std::ranges::fill(lejos.chip.flash(), relleno);
    if (protegida) std::ranges::copy(puente::chip::palabra, lejos.chip.flash().begin() + puente::chip::dir_proteccion);
    reabrir();
    enviar_comando(e, "A");
    esperar_con_vigilancia(e);
    lejos.comandos.clear();
  }
  /// Grants what `grabar_flash` expects of the chip, and runs it.
  void grabar() {
    empezar(0xFF);
    ASSERT_TRUE(habilitar_flash_reset(e));
    lejos.comandos.clear();
    grabar_flash(e, v, a);
  }
  void cargar(std::int32_t dir0, const std::vector<std::uint8_t>& bytes) {
    for (const std::uint8_t b : bytes) poner_byte(v, dir0++, b);
  }
  std::string diario() const { return dir.leer("unidades/c/Datos/TORVAX-m68k/memoria.txt"); }
  bool borrada() { return std::ranges::count(lejos.chip.flash(), 0xFF) == total_flash; }

  Variables_grab v;
  contador_cambios cambios;
  avance a{cambios};
};

TEST_F(flujos, write_enable_goes_step_by_step_and_stops_at_the_first_refusal) {
  const struct {
    bool sin_permiso, sin_config;
    const char *flujo, *flujo_reset;
    std::string texto;
  } casos[] = {{false, false, "a c d2E c a c", "a c d2E c", ""},
               {true, false, "a c", "a c", "Error al habilitar escritura en la Flash"},
               {false, true, "a c d2E c", "a c d2E c", texto_sin_config}};
  for (const auto& c : casos) {
    for (const bool entera : {true, false}) {
      empezar();
      lejos.chip.falla_permiso = c.sin_permiso;
      lejos.chip.falla_config = c.sin_config;
      EXPECT_EQ(entera ? habilitar_flash(e) : habilitar_flash_reset(e), c.texto.empty());
      EXPECT_EQ(lejos.flujo(), entera ? c.flujo : c.flujo_reset);
      EXPECT_EQ(plat.cajas, std::vector(c.texto.empty() ? 0 : 1, critica(titulo_problema, c.texto)));
    }
  }
}

TEST_F(flujos, an_inactive_ezport_speaks_and_the_bits_of_an_earlier_reply_decide) {
  for (const bool antes : {false, true}) {
    lejos.chip.mudo = false;
    empezar();
    lejos.chip.mudo = true;
    e.bit_wen = e.bit_config = antes;
    EXPECT_EQ(habilitar_flash(e), antes);
    EXPECT_EQ(plat.cajas.size(), antes ? 3u : 2u);
  }
}

struct guion_de_borrado : banco_enlace<guion> {
  contador_cambios cambios;
  avance a{cambios};
};

TEST_F(guion_de_borrado, a_reply_without_data_does_not_end_an_erase) {
  reabrir();
  // The digits "30" of its checksum stand where a status stands.
  for (const char* r : {"0", "002", "0", "020", "0", "022", "0", "0", "021", "020"}) lejos.contestar(marco(r));
  EXPECT_TRUE(borrar_flash(e, a));
  EXPECT_EQ(lejos.comandos.size(), 10u);
}

TEST_F(flujos, the_erase_counts_its_polls_and_an_error_wins_over_done) {
  const caja largo = critica("Atención, ocurrió un problema al grabar",
                             "Tiempo de borrado de Flash se ha excedido, se ha detenido el proceso de grabación");
  const struct {
    int ocupada;
    bool falla;
    std::size_t sondeos;
    std::vector<caja> cajas;
  } casos[] = {{0, false, 1, {}},
               {53, false, 54, {}},
               {54, false, 55, {largo}},
               {100'000, false, 55, {largo}},
               {0, true, 1, {critica(titulo_problema, texto_sin_borrar)}}};
  for (const auto& c : casos) {
    empezar();
    lejos.chip.sondeos_de_borrado = c.ocupada;
    lejos.chip.falla_borrado = c.falla;
    EXPECT_EQ(borrar_flash(e, a), c.cajas.empty());
    std::string esperado = habilitacion + " i";
    for (std::size_t i = 0; i < c.sondeos; ++i) esperado += " c";
    EXPECT_EQ(lejos.flujo(), esperado);
    EXPECT_EQ(plat.cajas, c.cajas);
    EXPECT_TRUE(!c.cajas.empty() || borrada());
  }
}

TEST_F(flujos, an_erase_that_a_reset_cut_off_is_no_success) {
  for (const std::uint64_t sondeo : {1u, 2u, 3u}) {
    empezar();
    lejos.placa.fallos.reset_en = lejos.placa.tramas() + 7 + sondeo;
    EXPECT_FALSE(borrar_flash(e, a));
    EXPECT_TRUE(e.corte.interrumpida && e.corte.cierre_permitido);
    EXPECT_EQ(plat.cajas.size(), 1u);
  }
}

TEST_F(flujos, a_poll_without_a_status_repeats_the_verdict_before) {
  lejos.placa.fallos.error_en = lejos.placa.tramas() + 8;
  EXPECT_TRUE(borrar_flash(e, a) && borrada());
  EXPECT_EQ(lejos.flujo(), habilitacion + " i c c c c c") << "the refused poll says nothing";
}

TEST_F(flujos, programming_starts_at_a_whole_group_and_fills_the_last_one) {
  cargar(2, {0xAA, 0xBB, 0xCC, 0xDD, 0xEE});
  borrar_y_programar(e, v, a);
  EXPECT_EQ(lejos.flujo(), habilitacion + " i c c c c c a c d2E c a g000000FFFFAABB a g000004CCDDEEFF");
  EXPECT_EQ(diario(), marco("g000000FFFFAABB") + "\r\n" + marco("g000004CCDDEEFF") + "\r\n");
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"", texto_grabado}}));
  EXPECT_TRUE(modo_de_siempre() && a.Progress.Value == 0 && !a.time_fin.Text.valor().empty());
  EXPECT_TRUE(v.dir_max_grabada == 6 && lejos.chip.flash()[4] == 0xCC);
}

TEST_F(flujos, holes_and_the_top_of_the_flash_go_out_as_the_image_holds_them) {
  cargar(0x100A, {1, 2, 3});
  limpiar_buffer_salida(v);
  cargar(0x1013, {9});
  grabar();
  EXPECT_EQ(lejos.flujo(), "a g001008FFFFFFFF a g00100CFFFFFFFF a g001010FFFFFF09") << "old marks set the start";
  grabar();
  EXPECT_EQ(diario().size(), 3u * 21) << "the journal holds the last run alone";
  v = {};
  limpiar_buffer_salida(v);
  cargar(0x3FFFA, {1, 2, 3, 4, 5, 6});
  grabar();
  EXPECT_EQ(lejos.flujo(), "a g03FFF8FFFF0102 a g03FFFC03040506");
  cargar(0x40000, {7, 8});
  grabar();
  EXPECT_EQ(lejos.flujo(), "a g03FFF8FFFF0102 a g03FFFC03040506 a g040000FFFFFFFF");
}

TEST_F(flujos, a_stop_ends_between_two_groups) {
  cargar(0, std::vector<std::uint8_t>(64, 0x55));
  for (const std::size_t ordenes : {0u, 6u}) {
    a.cancelar = ordenes == 0;
    plat.en_cada_pasada = [&] { a.cancelar |= lejos.comandos.size() == 6 && lejos.comandos.back()[0] == 'g'; };
    grabar();
    EXPECT_EQ(lejos.comandos.size(), ordenes);
    EXPECT_EQ(ultima(), (caja{"", texto_detenido}));
    EXPECT_TRUE(!a.cancelar && v.dir_max_grabada == 63 && a.Progress.Value == 0 && modo_de_siempre());
  }
}

TEST_F(flujos, a_protected_flash_is_the_users_decision) {
  const struct {
    respuesta_caja respuesta;
    bool falla;
    std::string flujo, ultimo;
    int byte;
  } casos[] = {{vbNo, false, "c", "", 0xFF},
               {vbYes, true, "c " + habilitacion + " i c c c c", texto_sin_borrar, 0xFF},
               {vbYes, false, "c " + habilitacion + " i c c c c a g00000001020304", texto_grabado, 4}};
  const std::string pregunta =
      "La Flash del microcontrolador se encuentra protegida, desea borrarla para grabar un programa nuevo?";
  cargar(0, {1, 2, 3, 4});
  for (const auto& c : casos) {
    empezar(0xFF, true);
    lejos.chip.falla_borrado = c.falla;
    plat.responder(c.respuesta);
    programar_flash(e, v, a);
    EXPECT_EQ(plat.cajas.front(), (caja{"Atención Memoria Protegida", pregunta, botones::SiNo, icono::critico}));
    EXPECT_EQ(textos(), pregunta + (c.ultimo.empty() ? "" : "|" + c.ultimo));
    EXPECT_EQ(lejos.flujo(), c.flujo);
    EXPECT_EQ(lejos.chip.flash()[3], c.byte);
    EXPECT_EQ(diario().empty(), c.byte != 4);
  }
}

TEST_F(flujos, a_missing_journal_directory_is_told_and_the_run_goes_on) {
  std::filesystem::remove_all(dir.ruta() / "unidades");
  cargar(0, {1, 2, 3, 4});
  grabar();
  EXPECT_EQ(textos(), "Se ha producido el siguiente error: " + std::to_string(ENOENT) +
                          ", al intentar abrir el fichero: C:\\Datos\\TORVAX-m68k\\\\memoria.txt|" + texto_grabado);
  EXPECT_EQ(lejos.chip.flash()[0], 1);
}

/// Programming is broken off at every frame in turn, by each way in which a board can fail.
TEST_F(flujos, a_run_that_breaks_off_says_nothing_of_its_own) {
  const std::uint64_t tramas_de_preparacion = 5, tramas_de_todo = 13;
  cargar(0, std::vector<std::uint8_t>(16, 0x55));
  for (std::uint64_t n = 1; n <= tramas_de_todo; ++n) {
    for (const int falta : {0, 1, 2, 3}) {
      SCOPED_TRACE("frame " + std::to_string(n) + ", fault " + std::to_string(falta));
      empezar(0xFF);
      puente::faltas& f = lejos.placa.fallos;
      const std::uint64_t cual = lejos.placa.tramas() + n;
      if (falta == 0) f.muda_desde = cual;
      if (falta == 1) f.cortada_en = cual, f.cortada_tras = 3;
      if (falta == 2) f.balbuceo_desde = cual;
      if (falta == 3) f.suma_mala_en = cual;
      plat.olvidar_respuestas();
      plat.responder(vbCancel);
      programar_flash(e, v, a);
      // In the write loop five characters are a reply, whatever they say.
      const bool no_se_nota = falta >= 2 && n > tramas_de_preparacion;
      EXPECT_EQ(e.corte.interrumpida, !no_se_nota);
      EXPECT_EQ(textos() == texto_grabado, no_se_nota);
      EXPECT_TRUE(plat.cajas.size() == 1 && modo_de_siempre() && a.Progress.Value == 0);
    }
  }
}

}  // namespace
