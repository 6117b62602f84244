#include <algorithm>

#include "apoyo/banco.h"
#include "apoyo/guion.h"
#include "apoyo/placa_lejos.h"
#include "flash/borrar.h"
#include "flash/grabar.h"
#include "flash/habilitar.h"
#include "flash/leer.h"
#include "flash/verificar.h"

using namespace apoyo;

namespace {

const std::string habilitacion = "a c d2E c a c";

/// The flows against the simulated board, with the port open and the chip taking commands.
struct flujos : banco_enlace<placa_lejos> {
  flujos() {
    dir.escribir("unidades/c/Datos/TORVAX-m68k/memoria.txt", "");
    limpiar_buffer_salida(v);
    empezar();
  }
  /// Opens port and chip anew, with a board that is well and a flash full of `relleno`.
  void empezar(std::uint8_t relleno = 0, bool protegida = false) {
    lejos.reparar();
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

  Variables_grab v;
  contador_cambios cambios;
  avance a{cambios};
};

TEST_F(flujos, without_the_permission_to_write_nothing_is_configured) {
  lejos.chip.modo.falla_permiso = true;
  EXPECT_FALSE(habilitar_flash(e));
  EXPECT_EQ(lejos.flujo(), "a c") << lejos.flujo();
  EXPECT_EQ(textos(), "Error al habilitar escritura en la Flash") << lejos.flujo();
}

struct guion_de_flujos : banco_enlace<guion> {
  contador_cambios cambios;
  avance a{cambios};
};

TEST_F(guion_de_flujos, replies_of_other_lengths_and_letters_are_taken_for_what_stands_at_their_places) {
  const std::string con_datos = "La Flash contiene datos, no está borrada";
  const std::string difiere = "El programa contenido en la Flash difiere del cargado en el buffer";
  // What stands at the marks of a reply of 15, of one of 47, and of the first one of the sums, which may be longer.
  const auto marcada = [](std::size_t largo, std::size_t donde, const std::string& marca) {
    return std::string(largo, 'x').replace(donde, marca.size(), marca);
  };
  const std::string vacia = marcada(15, 2, "FF");
  const std::tuple<bool, std::vector<std::string>, std::string, bool> casos[] = {
      {false, {vacia, marcada(47, 34, "ff")}, con_datos, false},
      {true, {marcada(16, 5, "0003FBFE")}, difiere, false},
      {true, {marcada(19, 5, "0003FBFE")}, difiere, false},
      {true, {marco("C000000000400").substr(0, 16)}, "", true},
      {true, {marcada(16, 5, "0003FBFG")}, "", true}};
  for (const auto& [suma, respuestas, dicho, rota] : casos) {
    Variables_grab v;
    reabrir();
    e.linea_inquieta = false;
    for (const std::string& r : respuestas) lejos.contestar(r);
    plat.usuario = [](const caja&) { return vbCancel; };
    suma ? verificar_sumas(e, v, a) : verificar_borrado(e, a);
    EXPECT_EQ(textos().substr(0, dicho.size()), dicho) << respuestas.back();
    EXPECT_EQ(e.operacion.interrumpida, rota) << respuestas.back();
  }
  Variables_grab v;
  reabrir();
  lejos.contestar(marco("0" + std::string(40, '1')));
  leer_flash(e, v, a, 0, 0);
  EXPECT_EQ(std::tuple(v.buffer_entrada[19], v.buffer_entrada[20], v.buffer_entrada[21]), std::tuple(0x11, 0x0D, 0));
}

TEST_F(guion_de_flujos, a_reply_without_data_does_not_end_an_erase) {
  reabrir();
  // The digits "30" of its checksum stand where a status stands.
  for (const char* r : {"0", "002", "0", "020", "0", "022", "0", "0", "021", "020"}) lejos.contestar(marco(r));
  EXPECT_TRUE(borrar_flash(e, a));
  EXPECT_EQ(lejos.comandos.size(), 10u);
}

TEST_F(flujos, the_erase_counts_its_polls_and_an_error_wins_over_done) {
  const caja largo = critica("Atención, ocurrió un problema al grabar",
                             "Tiempo de borrado de Flash se ha excedido, se ha detenido el proceso de grabación");
  const caja error =
      critica("Atención ocurrió un problema", "Error al borrar la Flash, se ha detenido la acción de borrar");
  const std::tuple<int, bool, std::size_t, std::vector<caja>> casos[] = {
      {53, false, 54, {}}, {54, false, 55, {largo}}, {100'000, false, 55, {largo}}, {0, true, 1, {error}}};
  for (const auto& [ocupada, falla, sondeos, cajas] : casos) {
    empezar();
    lejos.chip.modo.sondeos_de_borrado = ocupada;
    lejos.chip.modo.falla_borrado = falla;
    EXPECT_EQ(borrar_flash(e, a), cajas.empty());
    EXPECT_EQ(lejos.flujo().size(), (habilitacion + " i").size() + 2 * sondeos);
    EXPECT_EQ(plat.cajas, cajas);
  }
}

TEST_F(flujos, an_erase_that_a_reset_cut_off_is_no_success) {
  lejos.placa.averiar({.reset_en = 9});
  EXPECT_FALSE(borrar_flash(e, a));
  EXPECT_TRUE(e.operacion.interrumpida);
  EXPECT_TRUE(e.operacion.cierre_permitido);
  EXPECT_EQ(plat.cajas.size(), 1U);
}

TEST_F(flujos, programming_starts_at_a_whole_group_and_fills_the_last_one) {
  cargar(2, {0xAA, 0xBB, 0xCC});
  borrar_y_programar(e, v, a);
  EXPECT_EQ(lejos.flujo(), habilitacion + " i c c c c c a c d2E c a g000000FFFFAABB a g000004CCFFFFFF");
  EXPECT_EQ(diario(), marco("g000000FFFFAABB") + "\r\n" + marco("g000004CCFFFFFF") + "\r\n");
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"", texto_grabado}}));
  EXPECT_TRUE(modo_de_siempre());
  EXPECT_EQ(a.Progress.Value, 0);
  EXPECT_FALSE(a.time_fin.Text.valor().empty());
  a.cancelar = true;
  v.dir_max_grabada = 0;
  grabar();
  EXPECT_TRUE(lejos.comandos.empty());
  EXPECT_EQ(textos(), texto_detenido);
  EXPECT_EQ(v.dir_max_grabada, 4);
}

TEST_F(flujos, old_marks_and_the_top_of_the_flash_go_out_as_the_image_holds_them) {
  cargar(0x3FFF2, {1});
  limpiar_buffer_salida(v);
  cargar(0x3FFFA, {1, 2, 3, 4, 5, 6, 7, 8});
  grabar();
  EXPECT_EQ(lejos.flujo(), "a g03FFF0FFFFFFFF a g03FFF4FFFFFFFF a g03FFF8FFFF0102 a g03FFFC03040506 a g040000FFFFFFFF");
}

// The replies begin with sixteen erased bytes, whose FF then stand where the mark of the whole block is looked for.
TEST_F(flujos, noise_behind_a_reply_does_not_push_the_next_one_to_where_it_praises_a_flash_that_holds_data) {
  empezar(0xFF);
  lejos.chip.flash()[0x100] = 0xFE;
  ASSERT_TRUE(habilitar_flash(e));
  lejos.placa.averiar({.ruido_detras = 2});
  verificar_borrado(e, a);
  EXPECT_TRUE(e.operacion.interrumpida) << textos();
  EXPECT_TRUE(plat.cajas.empty()) << textos();
}

TEST_F(flujos, a_protected_flash_is_the_users_decision) {
  const std::string sin_permiso = "c", borrado = "c " + habilitacion + " i c c c c";
  cargar(0, {1, 2, 3, 4});
  for (const std::string& flujo : {sin_permiso, borrado, borrado + " a g00000001020304"}) {
    empezar(0xFF, true);
    lejos.chip.modo.falla_borrado = flujo == borrado;
    plat.responder(flujo == sin_permiso ? vbNo : vbYes);
    programar_flash(e, v, a);
    EXPECT_EQ(lejos.flujo(), flujo);
  }
  const std::string texto =
      "La Flash del microcontrolador se encuentra protegida, desea borrarla para grabar un programa nuevo?";
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención Memoria Protegida", texto, botones::SiNo, icono::critico},
                                           {"", texto_grabado}}));
}

TEST_F(flujos, a_missing_journal_directory_is_told_and_the_run_goes_on) {
  std::filesystem::remove_all(dir.en("unidades/c/Datos/TORVAX-m68k"));
  cargar(0, {1, 2, 3, 4});
  grabar();
  EXPECT_EQ(textos(), "Se ha producido el siguiente error: " + std::to_string(ENOENT) +
                          ", al intentar abrir el fichero: C:\\Datos\\TORVAX-m68k\\\\memoria.txt|" + texto_grabado);
}

}  // namespace
