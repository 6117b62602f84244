#include <chrono>

#include "apoyo/banco.h"
#include "frases/frases.h"
#include "serial/sistema.h"
#include "shell/frm_principal.h"
#include "shell/ordenes.h"
#include "shell/proyecto.h"

// The whole program but for its windows, on the host's own clock, files and COM1, where somebody has put a board.
namespace {

using namespace apoyo;

struct en_tiempo_real final : gemelo {
  instante ahora() const override {
    return std::chrono::duration_cast<instante>(std::chrono::steady_clock::now().time_since_epoch());
  }
  void eventos() override {}
};

struct TrabajoCom : testing::Test {
  void SetUp() override {
    dir.escribir("unidades/c/Datos/TORVAX-m68k/memoria.txt", "");
    dir.escribir("SETTINGS.TXT", "\"57600\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n");
    plat.usuario = [](const caja&) { return vbYes; };
    linea.al_fallar = [this](const causa_puerto& causa) { plat.cajas.push_back({"", frase(causa)}); };
    Form_Load(f);
    ASSERT_TRUE(plat.cajas.empty()) << "the bridge answers at the start";
    abrir_soltado(f, MUESTRAS "/demo-s1.s19");
    plat.cajas.clear();
  }

  carpeta dir;
  archivos ficheros{dir.ruta()};
  en_tiempo_real plat;
  transporte_del_sistema linea{dir.ruta()};
  Variables_grab v;
  frm_principal f{plat, ficheros, linea, v};
};

TEST_F(TrabajoCom, UnProgramaSeGrabaYSeVerifica) {
  f.menu.men_prog_t.Click();
  f.menu.mn_verifi_t_f.Click();
  ASSERT_EQ(plat.cajas.size(), 2U);
  EXPECT_EQ(plat.cajas[0].texto, texto_grabado);
  EXPECT_EQ(plat.cajas[1].texto, "El programa de la Flash ha sido verificado, está correcto");
}

TEST_F(TrabajoCom, UnaLineaQueSeCuelgaSeDiceUnaVezYElPuertoQuedaLibre) {
  f.menu.men_prog_t.Click();
  ASSERT_EQ(plat.cajas.size(), 1U);
  EXPECT_EQ(plat.cajas[0].texto, texto_interrumpida);
  EXPECT_TRUE(f.link.operacion.perdida) << "the line itself has said it, not a silence";
  EXPECT_FALSE(f.serial.PortOpen());
  f.menu.men_prog_t.Click();
  EXPECT_TRUE(plat.cajas[1].texto.starts_with("COM1: ")) << plat.cajas[1].texto;
}

}  // namespace
