#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>

#include "apoyo/carpeta.h"
#include "platform/sistema.h"
#include "shell/frm_principal.h"
#include "shell/ordenes.h"
#include "shell/proyecto.h"

// The whole program but for its windows, on the host's own clock, files and COM1, where somebody has put a board.
namespace morvane {
namespace {

class plataforma_real final : public plataforma {
 public:
  instante ahora() const override {
    return std::chrono::duration_cast<instante>(std::chrono::steady_clock::now().time_since_epoch());
  }
  std::string hora() const override { return "00:00:00"; }
  std::string ShowOpen(const CommonDialog& /*dialogo*/) override { return {}; }
  [[noreturn]] void terminar() override { std::_Exit(1); }
  anfitrion& maquina() override { return maquina_; }

  std::string textos;

 protected:
  void eventos() override {}
  respuesta_caja mostrar(const caja& mensaje) override {
    textos += mensaje.texto + "|";
    return mensaje.teclas == botones::Aceptar ? vbOK : vbYes;
  }

 private:
  anfitrion_del_sistema maquina_;
};

class TrabajoCom : public testing::Test {
 protected:
  void SetUp() override {
    dir.escribir("unidades/c/Datos/TORVAX-m68k/memoria.txt", "");
    dir.escribir("SETTINGS.TXT", "\"57600\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n");
    linea.al_fallar = [this](const std::string& motivo) { plat.textos += "!" + motivo + "|"; };
    Form_Load(f);
    ASSERT_EQ(plat.textos, "") << "the bridge answers at the start";
    abrir_soltado(f, MUESTRAS "/demo-s1.s19");
    plat.textos.clear();
  }

  apoyo::carpeta dir;
  archivos ficheros{dir.ruta()};
  plataforma_real plat;
  transporte_del_sistema linea{dir.ruta()};
  Variables_grab v;
  frm_principal f{plat, ficheros, linea, v};
};

TEST_F(TrabajoCom, UnProgramaSeGrabaYSeVerifica) {
  f.menu.men_prog_t.Click();
  f.menu.mn_verifi_t_f.Click();
  EXPECT_EQ(plat.textos, "¡Ha terminado de grabar!|El programa de la Flash ha sido verificado, está correcto|");
}

TEST_F(TrabajoCom, UnaLineaQueSeCuelgaSeDiceUnaVezYElPuertoQuedaLibre) {
  f.menu.men_prog_t.Click();
  EXPECT_EQ(plat.textos, "La comunicación se ha interrumpido y la operación no ha terminado. Debe repetirla|");
  EXPECT_TRUE(f.link.corte.perdida) << "the line itself has said it, not a silence";
  EXPECT_FALSE(f.serial.PortOpen());
  plat.textos.clear();
  f.menu.men_prog_t.Click();
  EXPECT_TRUE(plat.textos.starts_with("!COM1: ")) << plat.textos;
}

}  // namespace
}  // namespace morvane
