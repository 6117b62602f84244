// A programming run that is cut off at each of its frames, by the death of the program or of the board.

#include <algorithm>
#include <memory>

#include "apoyo/banco_principal.h"

using namespace apoyo;

namespace {

struct muerto {};

struct corte_en_vuelo : banco<placa_lejos> {
  struct programa {
    explicit programa(corte_en_vuelo& b) : f(b.plat, b.ficheros, b.linea, v) { Form_Load(f); }
    Variables_grab v;
    frm_principal f;
  };
  corte_en_vuelo() {
    dir.escribir("unidades/c/Datos/TORVAX-m68k/memoria.txt", "");
    dir.escribir("SETTINGS.TXT", ajustes_buenos);
    dir.escribir("doce.bin", "doce letras.");
    dir.escribir("MENU.TXT", "\"" + (dir.ruta() / "doce.bin").string() + "\"\r\n");
    plat.usuario = [](const caja& c) { return c.teclas == botones::SiNoCancelar ? vbCancel : vbOK; };
  }
  void programar() {
    lejos.comandos.clear();
    p->f.menu.men_dir[0].Click();
    plat.cajas.clear();
    p->f.barra.ButtonClick(3);
  }
  /// Programs, and lets `accion` happen in the first pass after the board has taken `n` frames.
  void programar_y(std::size_t n, const std::function<void()>& accion) {
    plat.en_cada_pasada = [this, n, &accion, hecha = false]() mutable {
      if (hecha || lejos.comandos.size() < n) return;
      hecha = true;
      accion();
    };
    programar();
    plat.en_cada_pasada = nullptr;
  }
  void una_pasada_normal_lo_arregla() {
    plat.pasar(1s);
    programar();
    EXPECT_EQ(textos(), texto_grabado);
    EXPECT_TRUE(std::ranges::equal(lejos.chip.flash(), std::span(p->v.buffer_salida).first(total_flash)));
    p->f.barra.ButtonClick(4);
    EXPECT_TRUE(textos().ends_with("está correcto")) << textos();
    EXPECT_EQ(dir.leer("SETTINGS.TXT"), ajustes_buenos);
  }
  /// Frames of a whole run.
  std::size_t tramas() {
    p = std::make_unique<programa>(*this);
    programar();
    return lejos.comandos.size();
  }

  std::unique_ptr<programa> p;
};

TEST_F(corte_en_vuelo, of_the_program_is_mended_by_the_next_one) {
  const std::size_t todas = tramas();
  for (std::size_t n = 1; n <= todas; ++n) {
    SCOPED_TRACE(n);
    EXPECT_THROW(programar_y(n, [] { throw muerto{}; }), muerto);
    plat.en_cada_pasada = nullptr;
    const std::string diario = dir.leer("unidades/c/Datos/TORVAX-m68k/memoria.txt");
    EXPECT_TRUE(diario.empty() || diario.ends_with("\x03\r\n")) << "only whole frames";
    p.reset();
    p = std::make_unique<programa>(*this);
    una_pasada_normal_lo_arregla();
  }
}

TEST_F(corte_en_vuelo, of_the_board_is_told_or_found_by_the_verification) {
  const std::size_t todas = tramas();
  for (std::size_t n = 1; n < todas; ++n) {
    SCOPED_TRACE(n);
    programar_y(n, [this] {
      lejos.chip.reiniciar();
      lejos.placa.vaciar();
    });
    const std::string dicho = textos();
    plat.pasar(1s);
    p->f.barra.ButtonClick(4);
    const bool entera = std::ranges::equal(lejos.chip.flash(), std::span(p->v.buffer_salida).first(total_flash));
    const bool correcto = textos().ends_with("está correcto");
    EXPECT_TRUE(entera || !correcto) << textos();
    EXPECT_TRUE(dicho.find(texto_interrumpida) != std::string::npos || !correcto) << dicho;
    una_pasada_normal_lo_arregla();
  }
}

}  // namespace
