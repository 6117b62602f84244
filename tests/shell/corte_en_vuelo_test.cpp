// A programming run that is cut off at each of its frames, by the death of the program or of the board.

#include "banco_ordenes.h"

using namespace apoyo;

namespace {

struct muerto {};

struct corte_en_vuelo : banco_ordenes {
  void SetUp() override {
    empezar();
    abrir_archivo("doce.bin", "doce letras.");
    una_pasada_normal_lo_arregla();
  }
  bool entera() const { return std::ranges::equal(lejos.chip.flash(), std::span(v.buffer_salida).first(total_flash)); }
  std::string verificar() { return correr(mn_verifi_t_f_Click), textos(); }
  void una_pasada_normal_lo_arregla() {
    correr(men_prog_t_Click);
    tramas = lejos.comandos.size();
    EXPECT_TRUE(textos() == texto_grabado && entera() && verificar().ends_with("está correcto")) << textos();
  }
  std::size_t tramas = 0;
};

TEST_F(corte_en_vuelo, of_the_program_is_mended_by_the_next_one) {
  for (std::size_t n = 1; n <= tramas; ++n) {
    SCOPED_TRACE(n);
    tras(n, [] { throw muerto{}; });
    EXPECT_THROW(men_prog_t_Click(f), muerto);
    const std::string diario = dir.leer("unidades/c/Datos/TORVAX-m68k/memoria.txt");
    EXPECT_TRUE(diario.empty() || diario.ends_with("\x03\r\n")) << "only whole frames";
    una_pasada_normal_lo_arregla();
  }
}

TEST_F(corte_en_vuelo, of_the_board_is_told_or_found_by_the_verification) {
  plat.usuario = [](const caja&) { return vbCancel; };
  for (std::size_t n = 1; n < tramas; ++n) {
    SCOPED_TRACE(n);
    tras(n, [this] {
      lejos.chip.reiniciar();
      lejos.placa.vaciar();
    });
    men_prog_t_Click(f);
    const bool dicho = textos().find(texto_interrumpida) != std::string::npos;
    const bool correcto = verificar().ends_with("está correcto");
    EXPECT_TRUE(!correcto || (entera() && dicho)) << textos();
    una_pasada_normal_lo_arregla();
  }
}

}  // namespace
