#include "desktop/puertos_qt.h"

#include <QtWidgets>

#include "aplicacion.h"
#include "apoyo/banco.h"
#include "apoyo/guion.h"

namespace {

using namespace apoyo;

struct puertos_qt_test : banco_enlace<guion> {
  QApplication& app = aplicacion();
  frm_cfg_pto_serial f{e};
  ventana_qt v{f.ventana, [] {}};
  placa_simulada placa{dir.ruta()};
  QComboBox& lista = *v.findChild<QComboBox*>("cmb_s_puerto");

  puertos_qt_test() {
    dir.escribir("SETTINGS.TXT", "\"57600\",\"n\",\"8\",\"1\"\r\n\"COM3\"\r\n");
    new puertos_qt(v, f, dir.ruta(), placa, plat);
    f.ventana.Show();
    v.sincronizar();
    v.show();
  }
  /// The entry of the context menu that begins so.
  QAction* entrada(const QString& principio) {
    emit v.contextual().aboutToShow();
    for (QAction* una : v.contextual().actions()) {
      if (QString(una->text()).remove('&').startsWith(principio)) return una;
    }
    return nullptr;
  }
};

TEST_F(puertos_qt_test, the_simulated_board_comes_and_goes_and_the_tips_tell) {
  EXPECT_TRUE(lista.toolTip().startsWith("COM3: no existen ni")) << lista.toolTip().toStdString();
  entrada("Placa simulada en COM3")->trigger();
  EXPECT_EQ(textos(), "");
  EXPECT_EQ(placa.puerto(), 3);
  EXPECT_TRUE(lista.toolTip().contains("Placa simulada\nLibre")) << lista.toolTip().toStdString();
  EXPECT_EQ(lista.itemData(2, Qt::ToolTipRole), lista.toolTip());
  EXPECT_TRUE(entrada("Placa simulada")->isChecked() && !entrada("Quitar")->isEnabled());
  {
    placa_simulada otra(dir.ruta());
    EXPECT_TRUE(otra.poner(3).find("otra placa tiene ya el enlace") != std::string::npos);
  }
  entrada("Placa simulada")->trigger();
  EXPECT_EQ(placa.puerto(), 0);
  EXPECT_TRUE(lista.toolTip().startsWith("COM3: no existen ni"));
}

TEST_F(puertos_qt_test, a_board_that_is_noted_comes_back_with_the_program_unless_a_link_has_taken_its_place) {
  ASSERT_EQ(placa.poner(3), "");
  {
    placa_simulada otra(dir.ruta());
    otra.reanudar();
    EXPECT_EQ(otra.puerto(), 0) << "it runs already";
  }
  placa_simulada despues(dir.ruta());
  dir.escribir("puertos/simulada.txt", "COM4\n");
  despues.reanudar();
  EXPECT_EQ(despues.puerto(), 4);
  dir.escribir("puertos/COM5", "");
  dir.escribir("puertos/simulada.txt", "COM5\n");
  placa_simulada tercera(dir.ruta());
  tercera.reanudar();
  EXPECT_EQ(tercera.puerto(), 0);
}

TEST_F(puertos_qt_test, what_cannot_be_changed_is_told_and_stays) {
  dir.escribir("puertos/COM3", "mío");
  entrada("Placa simulada en COM3")->trigger();
  EXPECT_TRUE(textos().starts_with("La placa simulada no puede ser COM3: ")) << textos();
  EXPECT_EQ(dir.leer("puertos/COM3"), "mío");
  f.cmb_s_puerto.Text = "COMx";
  v.sincronizar();
  EXPECT_FALSE(entrada("Elija antes")->isEnabled());
}

}  // namespace
