#include <algorithm>

#include "apoyo/banco_principal.h"
#include "link/puerto.h"

using namespace morvane;
using namespace apoyo;
using namespace std::chrono_literals;

namespace {

const std::string ocupado = "El puerto ya está siendo utilizado por otra aplicación";
const std::string interrumpida = "La comunicación se ha interrumpido y la operación no ha terminado. Debe repetirla";

struct ordenes : banco_principal {
  void SetUp() override { empezar(); }
  void pulsar(int indice) { f.barra.ButtonClick(indice); }
  /// Runs `accion` once, in the first pass after the board has taken `n` commands.
  void cuando_lleve(std::size_t n, std::function<void()> accion) {
    plat.en_cada_pasada = [this, n, accion = std::move(accion), hecha = false]() mutable {
      if (hecha || lejos.comandos.size() < n) return;
      hecha = true;
      accion();
    };
  }
};

TEST_F(ordenes, the_erase_from_click_to_chip) {
  std::ranges::fill(lejos.chip.flash(), std::uint8_t{0});
  lejos.chip.sondeos_de_borrado = 2;
  pulsar(2);
  EXPECT_EQ(lejos.flujo(), "A a c d2E c a c i c c c D");
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención", "¡Ha terminado de borrar!"}}));
  EXPECT_EQ(std::ranges::count(lejos.chip.flash(), 0xFF), total_flash);
  EXPECT_TRUE(en_reposo() && f.barra.boton(2).Enabled);
}

TEST_F(ordenes, a_failed_erase_is_closed_and_does_not_boast) {
  lejos.chip.falla_config = true;
  f.progreso.Progress.Value = 7;
  f.menu.men_borrar_t.Click();
  EXPECT_EQ(lejos.flujo(), "A a c d2E c D");
  EXPECT_EQ(textos(), std::vector<std::string>{"Error al escribir el registro de configuración"});
  EXPECT_EQ(f.progreso.Progress.Value, 7);
}

TEST_F(ordenes, a_file_goes_into_the_chip) {
  abrir_archivo("ocho.s19", ocho_bytes);
  pulsar(3);
  EXPECT_EQ(textos(), (std::vector<std::string>{"Ha terminado de cargar el archivo", "¡Ha terminado de grabar!"}));
  EXPECT_EQ(lejos.comandos.back(), "D");
  const auto flash = lejos.chip.flash();
  EXPECT_TRUE(std::equal(flash.begin(), flash.end(), v.buffer_salida.begin()) || flash[0x400] == 0xFF);
  EXPECT_EQ(flash[0x107], 8);
  EXPECT_EQ(v.dir_max_grabada, 0x107);
  EXPECT_TRUE(en_reposo() && f.progreso.Progress.Value == 0);
}

TEST_F(ordenes, nothing_is_erased_for_nothing) {
  pulsar(3);
  f.menu.men_prog_t.Click();
  EXPECT_EQ(plat.cajas, (std::vector<caja>(2, {"Atención", "Debe cargar un programa antes de grabar"})));
  EXPECT_TRUE(lejos.comandos.empty() && f.barra.boton(3).Enabled);
}

TEST_F(ordenes, a_second_command_is_refused_and_wipes_a_pending_stop) {
  abrir_archivo("ocho.s19", ocho_bytes);
  plat.cajas.clear();
  cuando_lleve(16, [this] {
    pulsar(6);
    EXPECT_TRUE(f.progreso.cancelar);
    pulsar(2);
    EXPECT_FALSE(f.progreso.cancelar);
    EXPECT_TRUE(f.barra.boton(2).Enabled && !f.barra.boton(3).Enabled) << "the pressed button waits for its command";
  });
  pulsar(3);
  EXPECT_EQ(textos(), (std::vector<std::string>{ocupado, "¡Ha terminado de grabar!"}));
  EXPECT_EQ(lejos.chip.flash()[0x107], 8);
}

TEST_F(ordenes, button_six_stops_between_groups) {
  abrir_archivo("ocho.s19", ocho_bytes);
  plat.cajas.clear();
  cuando_lleve(18, [this] { pulsar(6); });
  pulsar(3);
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"", "El proceso de grabación ha sido detenido por el usuario"}}));
  EXPECT_TRUE(lejos.chip.flash()[0x103] == 4 && lejos.chip.flash()[0x104] == 0xFF && !f.progreso.cancelar);
  pulsar(6);
  EXPECT_TRUE(f.progreso.cancelar) << "while idle it waits for the next command that clears it";
}

TEST_F(ordenes, opening_is_refused_while_a_command_runs) {
  abrir_archivo("ocho.s19", ocho_bytes);
  plat.cajas.clear();
  cuando_lleve(3, [this] {
    pulsar(1);
    f.menu.men_abrir.Click();
  });
  pulsar(3);
  ASSERT_EQ(plat.cajas.size(), 3u);
  EXPECT_EQ(plat.cajas[0].texto,
            "Hay una operación en curso. Espere a que termine, o deténgala, antes de abrir un archivo");
  EXPECT_EQ(plat.cajas[1], plat.cajas[0]);
  EXPECT_EQ(lejos.chip.flash()[0x107], 8);
}

TEST_F(ordenes, flash_commands_are_refused_while_a_load_runs) {
  plat.en_cada_pasada = [this] {
    plat.en_cada_pasada = nullptr;
    pulsar(2);
  };
  abrir_archivo("ocho.s19", ocho_bytes);
  EXPECT_EQ(textos(), (std::vector<std::string>{"Se está cargando un archivo. Espere a que termine la carga",
                                                "Ha terminado de cargar el archivo"}));
  EXPECT_TRUE(lejos.comandos.empty());
}

TEST_F(ordenes, a_failed_closing_does_not_take_back_what_was_said) {
  abrir_archivo("ocho.s19", ocho_bytes);
  plat.cajas.clear();
  lejos.placa.fallos.cuelga_en = lejos.placa.tramas() + 22;
  pulsar(3);
  EXPECT_EQ(lejos.comandos.back(), "D");
  EXPECT_EQ(textos(), std::vector<std::string>{"¡Ha terminado de grabar!"});
  EXPECT_TRUE(en_reposo());
}

/// Erase and programming, broken off at each of their frames by silence, a lost or cut reply, RESET signals, refusals,
/// and a status that says nothing. What is announced as done is done.
TEST_F(ordenes, every_way_out_of_a_broken_command_leads_to_an_idle_window) {
  abrir_archivo("ocho.s19", ocho_bytes);
  for (const int boton : {2, 3}) {
    for (std::uint64_t n = 1; n <= (boton == 2 ? 12u : 21u); ++n) {
      for (const int falta : {0, 1, 2, 3, 4, 5}) {
        for (const respuesta_caja respuesta : {vbCancel, vbYes}) {
          SCOPED_TRACE(testing::Message()
                       << "button " << boton << " frame " << n << " fault " << falta << " answer " << respuesta);
          lejos.placa.fallos = {};
          lejos.placa.vaciar();
          plat.cajas.clear();
          plat.olvidar_respuestas();
          const std::uint64_t trama = lejos.placa.tramas() + n;
          if (falta == 0) lejos.placa.fallos.muda_desde = trama;
          if (falta == 1) lejos.placa.fallos.calla_en = trama;
          if (falta == 2) lejos.placa.fallos.reset_en = trama, lejos.placa.fallos.reset_repetido = 3;
          if (falta == 3) lejos.placa.fallos.reset_en = trama;
          if (falta == 4) lejos.placa.fallos.error_en = trama;
          if (falta == 5) lejos.placa.fallos.cortada_en = trama, lejos.placa.fallos.cortada_tras = 3;
          std::ranges::fill(lejos.chip.flash(), std::uint8_t{0});
          plat.responder(respuesta);
          if (respuesta == vbYes && falta == 0) plat.responder(vbCancel);
          pulsar(boton);
          EXPECT_TRUE(en_reposo() && f.barra.boton(boton).Enabled);
          const auto cajas = textos();
          const bool interrumpido = f.link.corte.interrumpida;
          EXPECT_EQ(std::ranges::count(cajas, interrumpida), interrumpido ? 1 : 0);
          EXPECT_TRUE(!interrumpido || cajas.back() == interrumpida) << "and nothing is said behind it";
          EXPECT_LE(cajas.size(), 5u);
          const bool borrada = std::ranges::find(cajas, "¡Ha terminado de borrar!") != cajas.end();
          const bool rechazada = falta == 4 && n == 8;
          EXPECT_TRUE(!borrada || rechazada || lejos.chip.flash()[0x20000] == 0xFF) << "a false word";
        }
      }
    }
  }
}

TEST_F(ordenes, a_device_that_vanishes_needs_no_question) {
  abrir_archivo("ocho.s19", ocho_bytes);
  plat.cajas.clear();
  lejos.placa.fallos.cuelga_en = lejos.placa.tramas() + 17;
  pulsar(3);
  EXPECT_EQ(plat.cajas, (std::vector<caja>{{"Atención", interrumpida, botones::Aceptar, icono::critico}}));
  EXPECT_TRUE(en_reposo());
}

TEST_F(ordenes, closing_during_a_command_closes_the_chip_first) {
  abrir_archivo("ocho.s19", ocho_bytes);
  EXPECT_TRUE(pedir_cierre(f)) << "an idle window goes at once";
  for (const std::size_t n : {1u, 6u, 10u, 16u, 18u}) {
    f.link.peticiones_cierre = 0;
    plat.cajas.clear();
    lejos.comandos.clear();
    cuando_lleve(n, [this] { EXPECT_FALSE(pedir_cierre(f) || debe_cerrarse(f)); });
    pulsar(3);
    EXPECT_TRUE(debe_cerrarse(f) && en_reposo());
    EXPECT_EQ(lejos.comandos.back(), "D") << n;
    EXPECT_LE(lejos.comandos.size(), n + 2) << "at most the rest of a group and the D";
    EXPECT_TRUE(plat.cajas.empty());
  }
}

TEST_F(ordenes, a_second_request_to_close_does_not_wait_for_a_silent_board) {
  abrir_archivo("ocho.s19", ocho_bytes);
  plat.cajas.clear();
  lejos.placa.fallos.muda_desde = lejos.placa.tramas() + 8;
  cuando_lleve(8, [this] {
    pedir_cierre(f);
    plat.programar(plat.ahora() + 200ms, [this] { pedir_cierre(f); });
  });
  const auto antes = plat.ahora();
  pulsar(3);
  EXPECT_LT(plat.ahora() - antes, 1s);
  EXPECT_TRUE(debe_cerrarse(f) && plat.cajas.empty() && en_reposo());
}

TEST_F(ordenes, leaving_by_the_menu_needs_no_question) {
  cuando_lleve(3, [this] { f.menu.men_salir.Click(); });
  EXPECT_THROW(pulsar(2), fin_de_programa);
}

}  // namespace
