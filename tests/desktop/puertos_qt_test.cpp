#include "desktop/puertos_qt.h"

#include <sys/stat.h>

#include "aplicacion.h"

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
    new puertos_qt(v, f, dir.ruta(), placa, plat, {});
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
  const auto dice = [&](const char* que) { return lista.accessibleDescription().contains(que); };
  EXPECT_TRUE(dice("COM3: no existen ni"));
  std::filesystem::create_directory(dir.ruta() / "puertos");
  std::filesystem::create_symlink("/no/<b>hay", dir.ruta() / "puertos/COM3");
  f.ventana.Show();
  v.hide();
  v.show();
  EXPECT_TRUE(dice("/no/<b>hay")) << lista.toolTip().toStdString();
  EXPECT_TRUE(lista.toolTip().contains("&lt;b&gt;")) << lista.toolTip().toStdString();
  std::filesystem::remove(dir.ruta() / "puertos/COM3");
  entrada("Placa simulada en COM3")->trigger();
  EXPECT_EQ(placa.puerto(), 3);
  EXPECT_TRUE(plat.cajas.empty());
  EXPECT_TRUE(dice("Placa simulada\nLibre"));
  EXPECT_TRUE(entrada("Placa simulada")->isChecked());
  EXPECT_FALSE(entrada("Quitar")->isEnabled());
  entrada("Placa simulada")->trigger();
  EXPECT_EQ(placa.puerto(), 0);
  EXPECT_TRUE(dice("COM3: no existen ni"));
}

TEST_F(puertos_qt_test, the_live_line_fits_and_the_button_offers_the_file_that_is_missing) {
  const auto* linea = v.findChild<QLabel*>("en_vigor");
  const auto dicho = [&] {
    EXPECT_LE(linea->heightForWidth(linea->width()), linea->height()) << linea->text().toStdString();
    return linea->text().toStdString();
  };
  EXPECT_EQ(dicho(), "En vigor: COM3 a 57600 baudios, guardado");
  EXPECT_EQ(entrada("Crear"), nullptr);
  lista.lineEdit()->selectAll();
  teclear(lista.lineEdit(), "COM4");
  EXPECT_EQ(dicho(), "⚠ Lo escrito no cuenta: elija en la lista. En vigor: COM3 a 57600 baudios");
  lista.lineEdit()->selectAll();
  teclear(lista.lineEdit(), "COM3");
  f.cmb_s_velocity.Text = "9600";
  f.cmb_s_velocity.Click();
  v.sincronizar();
  EXPECT_EQ(dicho(), "En vigor: COM3 a 9600 baudios, sin guardar");
  v.findChild<QPushButton*>("btn_guardar")->click();
  EXPECT_EQ(dicho(), "En vigor: COM3 a 9600 baudios, guardado");
  f.cmb_s_velocity.Text = "57600";
  f.cmb_s_velocity.Click();
  v.sincronizar();
  std::filesystem::remove(dir.ruta() / "SETTINGS.TXT");
  entrada("Crear")->trigger();
  EXPECT_EQ(dicho(), "En vigor: COM3 a 57600 baudios, guardado");
  EXPECT_EQ(v.findChild<QPushButton*>("btn_mas")->menu(), &v.contextual());
}

TEST_F(puertos_qt_test, a_board_that_is_noted_comes_back_unless_it_runs_already_or_a_file_has_its_place) {
  ASSERT_EQ(placa.poner(3), "");
  dir.escribir("puertos/COM5", "mío");
  for (const auto& [nota, vuelve] : {std::pair{"COM3\n", 0}, {"COM4\n", 4}, {"COM5\n", 0}}) {
    dir.escribir("puertos/simulada.txt", nota);
    placa_simulada otra(dir.ruta());
    otra.reanudar();
    EXPECT_EQ(otra.puerto(), vuelve);
  }
  std::filesystem::remove(dir.ruta() / "puertos/simulada.txt");
  ASSERT_EQ(::mkfifo((dir.ruta() / "puertos/simulada.txt").c_str(), 0600), 0);
  placa_simulada ninguna(dir.ruta());
  ninguna.reanudar();
  EXPECT_EQ(ninguna.puerto(), 0) << "and the start does not wait for a pipe";
  f.cmb_s_puerto.Text = "COM5";
  v.sincronizar();
  entrada("Placa simulada en COM5")->trigger();
  EXPECT_TRUE(textos().starts_with("La placa simulada no puede ser COM5: ")) << textos();
  EXPECT_EQ(dir.leer("puertos/COM5"), "mío");
}

}  // namespace
