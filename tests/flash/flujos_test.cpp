#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "apoyo/carpeta.h"
#include "apoyo/placa_lejos.h"
#include "flash/borrar.h"
#include "flash/grabar.h"
#include "flash/habilitar.h"
#include "link/esperas.h"
#include "link/puerto.h"
#include "link/tramas.h"
#include "platform/gemelo.h"

using namespace morvane;
using namespace std::chrono_literals;

namespace {

const std::string habilitacion = "a c d2E c a c";

/// The flows against the simulated board, with the port open and the chip taking commands.
struct flujos : testing::Test {
  flujos() {
    std::filesystem::create_directories(dir.ruta() / "unidades/c/Datos/TORVAX-m68k");
    plat.vigilar(lejos);
    limpiar_buffer_salida(v);
    e.valores = {"57600", "n", "8", "1", "COM1", ficheros.ruta_aplicacion()};
    abrir_puerto(e);
    abrir_chip();
  }
  void abrir_chip() {
    enviar_comando(e, "A");
    esperar_con_vigilancia(e);
    lejos.comandos.clear();
  }
  void cargar(std::int32_t dir0, const std::vector<std::uint8_t>& bytes) {
    for (const std::uint8_t b : bytes) poner_byte(v, dir0++, b);
  }
  /// The addresses of the words sent, in order.
  std::vector<std::uint32_t> grupos() const {
    std::vector<std::uint32_t> dirs;
    for (const std::string& c : lejos.comandos) {
      if (c.front() == 'g') dirs.push_back(static_cast<std::uint32_t>(std::stoul(c.substr(1, 6), nullptr, 16)));
    }
    return dirs;
  }
  std::string diario() const { return dir.leer("unidades/c/Datos/TORVAX-m68k/memoria.txt"); }
  /// Grants what `grabar_flash` expects of the chip.
  void preparar_grabado() {
    ASSERT_TRUE(habilitar_flash_reset(e));
    lejos.comandos.clear();
  }
  bool modo_de_siempre() const { return serial.InputLen() == 1 && serial.RThreshold() == 1; }

  apoyo::carpeta dir;
  archivos ficheros{dir.ruta()};
  gemelo plat;
  apoyo::placa_lejos lejos;
  transporte_memoria linea{plat, lejos};
  MSComm serial{plat, linea};
  enlace e{plat, ficheros, serial};
  Variables_grab v;
  contador_cambios cambios;
  avance a{cambios};
};

TEST_F(flujos, write_enable_goes_step_by_step_and_stops_at_the_first_refusal) {
  const struct {
    bool sin_permiso, sin_config;
    const char *flujo, *flujo_reset, *texto;
  } casos[] = {{false, false, "a c d2E c a c", "a c d2E c", nullptr},
               {true, false, "a c", "a c", "Error al habilitar escritura en la Flash"},
               {false, true, "a c d2E c", "a c d2E c", "Error al escribir el registro de configuración"}};
  for (const auto& c : casos) {
    for (const bool entera : {true, false}) {
      abrir_chip();
      lejos.chip.falla_permiso = c.sin_permiso;
      lejos.chip.falla_config = c.sin_config;
      plat.cajas.clear();
      EXPECT_EQ(entera ? habilitar_flash(e) : habilitar_flash_reset(e), c.texto == nullptr);
      EXPECT_EQ(lejos.flujo(), entera ? c.flujo : c.flujo_reset);
      if (c.texto == nullptr) {
        EXPECT_TRUE(plat.cajas.empty());
      } else {
        EXPECT_EQ(plat.cajas,
                  (std::vector<caja>{{"Atención ocurrió un problema", c.texto, botones::Aceptar, icono::critico}}));
      }
    }
  }
}

TEST_F(flujos, an_inactive_ezport_speaks_before_the_failing_test) {
  lejos.chip.mudo = true;
  EXPECT_FALSE(habilitar_flash(e));
  ASSERT_EQ(plat.cajas.size(), 2u);
  EXPECT_EQ(plat.cajas[1].texto, "Error al habilitar escritura en la Flash");
  cerrar_puerto(e);
  abrir_puerto(e);
  lejos.chip.mudo = false;
  abrir_chip();
  lejos.chip.mudo = true;
  e.bit_wen = e.bit_config = 1;
  plat.cajas.clear();
  EXPECT_TRUE(habilitar_flash(e)) << "bits of an earlier reply let it pass";
  EXPECT_EQ(plat.cajas.size(), 3u);
}

TEST_F(flujos, the_erase_counts_its_polls) {
  const struct {
    int ocupada;
    std::size_t sondeos;
    bool bien;
  } casos[] = {{0, 1, true}, {53, 54, true}, {54, 55, false}, {100'000, 55, false}};
  for (const auto& c : casos) {
    abrir_chip();
    lejos.chip.sondeos_de_borrado = c.ocupada;
    plat.cajas.clear();
    std::ranges::fill(lejos.chip.flash(), std::uint8_t{0});
    EXPECT_EQ(borrar_flash(e), c.bien) << c.ocupada;
    std::string esperado = habilitacion + " i";
    for (std::size_t i = 0; i < c.sondeos; ++i) esperado += " c";
    EXPECT_EQ(lejos.flujo(), esperado);
    if (c.bien) {
      EXPECT_TRUE(plat.cajas.empty());
      EXPECT_EQ(std::ranges::count(lejos.chip.flash(), 0xFF), total_flash);
    } else {
      EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención, ocurrió un problema al grabar",
                                                "Tiempo de borrado de Flash se ha excedido, se ha detenido el proceso "
                                                "de grabación",
                                                botones::Aceptar, icono::critico}}));
    }
  }
}

TEST_F(flujos, an_erase_error_wins_over_done) {
  lejos.chip.falla_borrado = true;
  lejos.chip.sondeos_de_borrado = 0;
  EXPECT_FALSE(borrar_flash(e));
  EXPECT_EQ(plat.cajas.back(),
            (caja{"Atención ocurrió un problema", "Error al borrar la Flash, se ha detenido la acción de borrar",
                  botones::Aceptar, icono::critico}));
}

TEST_F(flujos, an_erase_that_a_reset_cut_off_is_no_success) {
  for (const std::uint64_t sondeo : {1u, 2u, 3u}) {
    cerrar_puerto(e);
    ASSERT_TRUE(abrir_puerto(e));
    abrir_chip();
    plat.cajas.clear();
    std::ranges::fill(lejos.chip.flash(), std::uint8_t{0});
    lejos.placa.fallos.reset_en = lejos.placa.tramas() + 7 + sondeo;
    EXPECT_FALSE(borrar_flash(e));
    EXPECT_TRUE(e.corte.interrumpida && e.corte.cierre_permitido);
    EXPECT_EQ(plat.cajas.size(), 1u);
  }
}

TEST_F(flujos, a_poll_without_a_status_repeats_the_verdict_before) {
  lejos.placa.fallos.error_en = lejos.placa.tramas() + 8;
  std::ranges::fill(lejos.chip.flash(), std::uint8_t{0});
  EXPECT_TRUE(borrar_flash(e));
  EXPECT_EQ(lejos.flujo(), habilitacion + " i c c c c c") << "the refused poll says nothing";
  EXPECT_EQ(std::count(lejos.chip.flash().begin(), lejos.chip.flash().end(), 0xFF), total_flash);
}

TEST_F(flujos, programming_starts_at_a_whole_group_and_fills_the_last_one) {
  cargar(2, {0xAA, 0xBB, 0xCC, 0xDD, 0xEE});
  borrar_y_programar(e, v, a);
  EXPECT_EQ(lejos.flujo(), habilitacion + " i c c c c c a c d2E c a g000000FFFFAABB a g000004CCDDEEFF");
  EXPECT_EQ(diario(), "\x02g000000FFFFAABB" + suma_comprobacion("g000000FFFFAABB") + "\x03\r\n\x02g000004CCDDEEFF" +
                          suma_comprobacion("g000004CCDDEEFF") + "\x03\r\n");
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"", "¡Ha terminado de grabar!"}}));
  EXPECT_EQ(v.dir_max_grabada, 6);
  EXPECT_TRUE(modo_de_siempre() && a.Progress.Value == 0 && !a.time_fin.Text.valor().empty());
  EXPECT_EQ(lejos.chip.flash()[4], 0xCC);
}

TEST_F(flujos, holes_go_out_as_the_image_holds_them_and_old_marks_set_the_start) {
  cargar(0x100A, {1, 2, 3});
  cargar(0x1030, {4, 5});
  limpiar_buffer_salida(v);
  poner_byte(v, 0x1030, 9);
  preparar_grabado();
  grabar_flash(e, v, a);
  std::vector<std::uint32_t> esperados(11);
  std::generate(esperados.begin(), esperados.end(), [n = 0x1004u]() mutable { return n += 4; });
  EXPECT_EQ(grupos(), esperados);
  EXPECT_EQ(lejos.comandos.back(), "g00103009FFFFFF");
  grabar_flash(e, v, a);
  EXPECT_EQ(diario().size(), 11u * 21) << "the journal holds the last run alone";
}

TEST_F(flujos, the_top_of_the_flash_and_beyond) {
  for (const std::int32_t top : {0x3FFFF, 0x40001}) {
    preparar_grabado();
    cargar(0x3FFFA, {1, 2, 3, 4, 5, 6});
    if (top > 0x3FFFF) cargar(0x40000, {7, 8});
    grabar_flash(e, v, a);
    EXPECT_EQ(lejos.flujo(),
              std::string("a g03FFF8FFFF0102 a g03FFFC03040506") + (top > 0x3FFFF ? " a g040000FFFFFFFF" : ""));
    abrir_chip();
  }
}

TEST_F(flujos, a_stop_ends_between_two_groups) {
  cargar(0, std::vector<std::uint8_t>(64, 0x55));
  a.cancelar = true;
  preparar_grabado();
  grabar_flash(e, v, a);
  EXPECT_TRUE(lejos.comandos.empty());
  plat.en_cada_pasada = [this] {
    if (grupos().size() == 3) a.cancelar = true;
  };
  grabar_flash(e, v, a);
  EXPECT_EQ(grupos().size(), 3u);
  EXPECT_EQ(lejos.comandos.size(), 6u);
  for (const caja& c : plat.cajas) EXPECT_EQ(c, (caja{"", "El proceso de grabación ha sido detenido por el usuario"}));
  EXPECT_EQ(plat.cajas.size(), 2u);
  EXPECT_TRUE(!a.cancelar && v.dir_max_grabada == 63 && a.Progress.Value == 0 && modo_de_siempre());
}

TEST_F(flujos, a_protected_flash_is_the_users_decision) {
  for (const int caso : {0, 1, 2}) {
    std::ranges::fill(lejos.chip.flash(), std::uint8_t{0xFF});
    std::ranges::copy(puente::chip::palabra, lejos.chip.flash().begin() + puente::chip::dir_proteccion);
    lejos.chip.falla_borrado = caso == 2;
    abrir_chip();
    plat.cajas.clear();
    cargar(0, {1, 2, 3, 4});
    plat.responder(caso == 0 ? vbNo : vbYes);
    programar_flash(e, v, a);
    ASSERT_FALSE(plat.cajas.empty());
    EXPECT_EQ(plat.cajas.front(), (caja{"Atención Memoria Protegida",
                                        "La Flash del microcontrolador se encuentra protegida, desea borrarla para "
                                        "grabar un programa nuevo?",
                                        botones::SiNo, icono::critico}));
    if (caso == 0) {
      EXPECT_EQ(lejos.flujo(), "c");
      EXPECT_EQ(plat.cajas.size(), 1u);
      EXPECT_EQ(lejos.chip.flash()[0], 0xFF);
    } else if (caso == 1) {
      EXPECT_EQ(lejos.flujo(), "c " + habilitacion + " i c c c c a g00000001020304");
      EXPECT_EQ(plat.cajas.back().texto, "¡Ha terminado de grabar!");
      EXPECT_EQ(lejos.chip.flash()[3], 4);
      std::filesystem::remove(dir.ruta() / "unidades/c/Datos/TORVAX-m68k/memoria.txt");
    } else {
      EXPECT_EQ(plat.cajas.back().texto, "Error al borrar la Flash, se ha detenido la acción de borrar");
      EXPECT_FALSE(std::filesystem::exists(dir.ruta() / "unidades/c/Datos/TORVAX-m68k/memoria.txt"));
    }
  }
}

TEST_F(flujos, a_missing_journal_directory_is_told_and_the_run_goes_on) {
  std::filesystem::remove_all(dir.ruta() / "unidades");
  cargar(0, {1, 2, 3, 4});
  preparar_grabado();
  grabar_flash(e, v, a);
  ASSERT_EQ(plat.cajas.size(), 2u);
  EXPECT_EQ(plat.cajas[0].texto, "Se ha producido el siguiente error: " + std::to_string(ENOENT) +
                                     ", al intentar abrir el fichero: C:\\Datos\\TORVAX-m68k\\\\memoria.txt");
  EXPECT_EQ(plat.cajas[1].texto, "¡Ha terminado de grabar!");
  EXPECT_EQ(lejos.chip.flash()[0], 1);
}

/// Programming is broken off at every frame in turn, by each way in which a board can fail.
TEST_F(flujos, a_run_that_breaks_off_says_nothing_of_its_own) {
  using falta = void (*)(puente::faltas&, std::uint64_t);
  constexpr std::array<falta, 4> faltas = {
      [](puente::faltas& f, std::uint64_t n) { f.muda_desde = n; },
      [](puente::faltas& f, std::uint64_t n) { f.cortada_en = n, f.cortada_tras = 3; },
      [](puente::faltas& f, std::uint64_t n) { f.balbuceo_desde = n; },
      [](puente::faltas& f, std::uint64_t n) { f.suma_mala_en = n; },
  };
  const std::uint64_t tramas_de_preparacion = 5, tramas_de_todo = 13;
  cargar(0, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16});
  for (std::uint64_t n = 1; n <= tramas_de_todo; ++n) {
    for (std::size_t i = 0; i < faltas.size(); ++i) {
      cerrar_puerto(e);
      lejos.placa.fallos = {};
      lejos.placa.vaciar();
      ASSERT_TRUE(abrir_puerto(e));
      abrir_chip();
      plat.cajas.clear();
      plat.olvidar_respuestas();
      plat.responder(vbCancel);
      faltas.at(i)(lejos.placa.fallos, lejos.placa.tramas() + n);
      programar_flash(e, v, a);
      SCOPED_TRACE("frame " + std::to_string(n) + ", fault " + std::to_string(i));
      ASSERT_EQ(plat.cajas.size(), 1u);
      // In the write loop five characters are a reply, whatever they say.
      const bool no_se_nota = i >= 2 && n > tramas_de_preparacion;
      EXPECT_EQ(e.corte.interrumpida, !no_se_nota);
      EXPECT_EQ(plat.cajas[0].texto == "¡Ha terminado de grabar!", no_se_nota);
      EXPECT_TRUE(modo_de_siempre() && a.Progress.Value == 0);
    }
  }
}

TEST_F(flujos, a_request_to_close_starts_nothing_new) {
  cargar(0, std::vector<std::uint8_t>(64, 0x55));
  for (const std::size_t tras : {1u, 5u, 8u, 14u, 20u}) {
    abrir_chip();
    e.peticiones_cierre = 0;
    plat.en_cada_pasada = [this, tras] {
      if (lejos.comandos.size() >= tras) e.peticiones_cierre = 1;
    };
    borrar_y_programar(e, v, a);
    EXPECT_LE(lejos.comandos.size(), tras + 1) << "at most the second half of a group";
    EXPECT_TRUE(plat.cajas.empty() && modo_de_siempre());
  }
}

}  // namespace
