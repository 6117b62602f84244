#include "aplicacion.h"

namespace {

using namespace apoyo;
using ventana_qt_test = banco_ventana;

TEST_F(ventana_qt_test, changed_properties_show_after_a_synchronisation) {
  f.avance.Progress.Value = 7;
  f.barra.boton(2).Enabled = false;
  f.rango.txt_desde.Text = "00FF";
  f.menu.men_dir[0].Caption = "&1 C&A\\r&d.s19";
  f.estado.panel(1).Text = "<b>a&b</b>";
  f.estado.panel(1).ToolTipText = "<b>a&b</b>";
  v.sincronizar();
  EXPECT_EQ(hijo<QProgressBar>("Progress").value(), 7);
  EXPECT_TRUE(hijo("Toolbar_1").isEnabled());
  EXPECT_FALSE(hijo("Toolbar_2").isEnabled());
  EXPECT_FALSE(hijo("fra_rango").isVisible());
  EXPECT_EQ(hijo<QLineEdit>("txt_desde").text(), "00FF");
  const auto& panel = hijo<QLabel>("StatusBar_1");
  EXPECT_EQ(panel.text(), "<b>a&b</b>");
  EXPECT_EQ(panel.textFormat(), Qt::PlainText);
  EXPECT_EQ(QTextDocumentFragment::fromHtml(panel.toolTip()).toPlainText(), "<b>a&b</b>");
  EXPECT_EQ(hijo<QAction>("men_dir_1").text(), "&1 C&&A\\r&&d.s19") << "only the first ampersand marks a key";
}

TEST_F(ventana_qt_test, events_reach_their_handlers_but_not_behind_a_box) {
  std::string pulsados;
  f.barra.ButtonClick = [&](int indice) { pulsados += std::to_string(indice) + (v.ocupada() ? "!" : ""); };
  f.rango.btn_leer.Click = [&] { pulsados += "b"; };
  f.menu.men_dir[0].Click = [&] { pulsados += "m"; };
  for (const bool tapada : {true, false}) {
    QDialog caja;
    caja.setModal(true);
    caja.setVisible(tapada);
    hijo<QToolButton>("Toolbar_3").click();
    hijo<QPushButton>("btn_leer").click();
    hijo<QAction>("men_dir_1").trigger();
    EXPECT_EQ(pulsados, tapada ? "" : "3!bm");
  }
  std::string motivo;
  v.al_fallar = [&](const std::string& cual) { motivo = cual; };
  f.rango.btn_leer.Click = [] { throw std::runtime_error("roto"); };
  hijo<QPushButton>("btn_leer").click();
  EXPECT_EQ(motivo, "roto") << "a handler that throws is reported and goes no further";
  EXPECT_FALSE(v.ocupada()) << "a handler that throws is reported and goes no further";
}

TEST_F(ventana_qt_test, in_a_menu_nothing_is_chosen_and_a_letter_finds_its_entry) {
  std::string pulsados;
  f.menu.men_borrar_t.Click = [&] { pulsados += "b"; };
  f.menu.men_verific_t.Click = [&] { pulsados += "v"; };
  f.menu.mn_verifi_t_f.Click = [&] { pulsados += "f"; };
  for (const auto& [letras, hecho] : {std::pair("\r", ""), {"v\r", "v"}, {"vv\r", "vf"}, {"b\r", "vfb"}}) {
    pulsar(v.menuBar(), Qt::Key_M, "m", Qt::AltModifier);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    if (menu == nullptr) {
      v.menuBar()->setActiveAction(&hijo<QAction>("men_memoria_f"));
      menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }
    ASSERT_NE(menu, nullptr);
    menu->setActiveAction(menu->actions().first());
    QApplication::processEvents();
    teclear(menu, letras);
    EXPECT_EQ(pulsados, hecho) << letras;
    while (auto* abierto = QApplication::activePopupWidget()) abierto->close();
  }
}

TEST_F(ventana_qt_test, typed_text_is_stored_at_once_and_chooses_no_entry_of_a_combo_box) {
  teclear(&hijo("txt_desde"), "1A");
  EXPECT_EQ(f.rango.txt_desde.Text.valor(), "1A");
  QAccessible::queryAccessibleInterface(&hijo("txt_desde"))->setText(QAccessible::Value, "001230");
  EXPECT_EQ(f.rango.txt_desde.Text.valor(), "001230") << "nor is what an assistive tool enters lost";
  auto& d = f.cfg_pto_serial;
  ventana_qt dialogo(d.ventana, {});
  auto& combo = *dialogo.findChild<QComboBox*>("cmb_s_velocity");
  std::string elegidos;
  d.cmb_s_velocity.Click = [&] { elegidos += d.cmb_s_velocity.Text.valor() + " "; };
  combo.lineEdit()->selectAll();
  teclear(combo.lineEdit(), "4800\r");
  EXPECT_EQ(d.cmb_s_velocity.Text.valor() + elegidos, "4800");
  pulsar(&combo, Qt::Key_Up);
  EXPECT_EQ(elegidos, "28800 ");
}

/// From small to three times the usual size.
TEST_F(ventana_qt_test, no_window_cuts_a_text) {
  f.rango.fra_rango.Visible = true;
  std::vector<Form*> todas = f.otras_ventanas();
  todas.push_back(&f.ventana);
  for (const double puntos : {6.0, 9.0, 27.0}) {
    QFont letra;
    letra.setPointSizeF(puntos);
    QApplication::setFont(letra);
    for (Form* forma : todas) {
      forma->Show();
      ventana_qt otra(*forma, {});
      otra.show();
      for (const auto* control : otra.centralWidget()->findChildren<QWidget*>()) {
        QSize falta = control->minimumSizeHint();
        if (control->hasHeightForWidth()) falta.setHeight(control->heightForWidth(control->width()));
        // One pixel is the style's, not the text's.
        const QSize hay = control->size() + QSize(1, 0);
        EXPECT_TRUE(control->isHidden() || hay == hay.expandedTo(falta)) << qPrintable(control->objectName()) << puntos;
      }
    }
  }
  QApplication::setFont({});
}

}  // namespace
