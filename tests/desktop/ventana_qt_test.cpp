#include "aplicacion.h"
#include "desktop/recepcion_qt.h"

namespace {

using namespace apoyo;
using ventana_qt_test = banco_ventana;

TEST_F(ventana_qt_test, changed_properties_show_after_a_synchronisation) {
  f.progreso.Progress.Value = 7;
  f.barra.boton(2).Enabled = false;
  f.rango.txt_desde.Text = "00FF";
  f.estado.panel(1).Text = "<b>a&b</b>";
  f.estado.panel(1).ToolTipText = "<b>a&b</b>";
  v.sincronizar();
  EXPECT_EQ(hijo<QProgressBar>("Progress").value(), 7);
  EXPECT_TRUE(hijo("Toolbar_1").isEnabled() && !hijo("Toolbar_2").isEnabled());
  EXPECT_TRUE(!hijo("fra_rango").isVisible() && hijo<QLineEdit>("txt_desde").text() == "00FF");
  const auto& panel = hijo<QLabel>("StatusBar_1");
  EXPECT_TRUE(panel.text() == "<b>a&b</b>" && panel.textFormat() == Qt::PlainText);
  EXPECT_EQ(QTextDocumentFragment::fromHtml(panel.toolTip()).toPlainText(), "<b>a&b</b>");
  const std::pair<const char*, const char*> rotulos[] = {{"&1 C:\\...C&A\\r&d.s19", "&1 C:\\...C&&A\\r&&d.s19"},
                                                         {"a\tb", "a b"}};
  for (const auto& [rotulo, esperado] : rotulos) {
    f.menu.men_dir[0].Caption = rotulo;
    v.sincronizar();
    EXPECT_EQ(hijo<QAction>("men_dir_1").text(), esperado) << "only the first ampersand marks a key";
  }
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
  EXPECT_TRUE(motivo == "roto" && !v.ocupada()) << "a handler that throws is reported and goes no further";
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
  QFocusEvent fuera(QEvent::FocusOut);
  QApplication::sendEvent(combo.lineEdit(), &fuera);
  EXPECT_EQ(d.cmb_s_velocity.Text.valor() + elegidos, "4800");
  pulsar(&combo, Qt::Key_Up);
  EXPECT_EQ(elegidos, "28800 ");
}

/// From small to three times the usual size.
TEST_F(ventana_qt_test, no_window_cuts_a_text) {
  f.rango.fra_rango.Visible = true;
  f.estado.panel(1).Text = std::string(51, 'm');
  std::vector<Form*> todas = f.otras_ventanas();
  todas.push_back(&f.ventana);
  for (const double puntos : {6.0, 9.0, 15.0, 27.0}) {
    const con_letra letra(puntos);
    for (Form* forma : todas) {
      forma->Show();
      ventana_qt otra(*forma, {});
      otra.show();
      for (const auto* control : otra.centralWidget()->findChildren<QWidget*>()) {
        const auto* rotulo = qobject_cast<const QLabel*>(control);
        QSize falta = control->minimumSizeHint();
        if (rotulo != nullptr) {
          falta = rotulo->fontMetrics().boundingRect(rotulo->rect(), Qt::TextWordWrap, rotulo->text()).size();
        }
        // One pixel is the style's, not the text's.
        const QSize hay = control->size() + QSize(1, 0);
        EXPECT_TRUE(control->isHidden() || hay == hay.expandedTo(falta)) << qPrintable(control->objectName()) << puntos;
      }
      for (QAction* menu : otra.menuBar()->actions()) {
        EXPECT_TRUE(!menu->isVisible() || otra.rect().contains(otra.menuBar()->actionGeometry(menu))) << puntos;
      }
      EXPECT_EQ(otra.minimumSize() == otra.maximumSize(), forma->fija);
    }
  }
}

struct recepcion : banco_ventana {
  std::string recibido;
  recepcion_qt r{v, [this](const std::string& ruta) { recibido = ruta; }};

  /// Drags `lugares` over the window and lets them fall. True if they would be taken.
  bool soltar(const QList<QUrl>& lugares, Qt::DropActions como) {
    QMimeData oferta;
    oferta.setUrls(lugares);
    QDragEnterEvent entra({9, 9}, como, &oferta, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&v, &entra);
    QDropEvent cae({9, 9}, como, &oferta, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&v, &cae);
    EXPECT_TRUE(entra.isAccepted() == cae.isAccepted() && (!cae.isAccepted() || cae.dropAction() != Qt::MoveAction));
    EXPECT_EQ(recibido, "") << "the program that it comes from waits for the drop to end";
    QApplication::processEvents();
    return cae.isAccepted();
  }
};

TEST_F(recepcion, only_one_firmware_file_of_this_machine_is_taken) {
  const auto url = [](const std::string& ruta) { return QUrl::fromLocalFile(QString::fromStdString(ruta)); };
  const std::string bueno = dir.escribir("á b#%41.s19", "x"), otro = dir.escribir("c.BIN", "x");
  const std::string latino = dir.escribir("\xF1.s19", "x"), texto = dir.escribir("x.hex", "x");
  const QByteArray raiz = QByteArray::fromStdString(dir.ruta().string());
  std::filesystem::create_directory(dir.ruta() / "carpeta.s19");
  const auto todas = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;
  const struct {
    QList<QUrl> lugares;
    Qt::DropActions como;
    std::string recibido;
  } casos[] = {{{url(bueno)}, todas, bueno},
               {{QUrl::fromEncoded("file://" + raiz + "/%F1.s19")}, todas, latino},
               {{QUrl::fromEncoded("file://localhost" + raiz + "/c.BIN")}, Qt::LinkAction, otro},
               {{url(bueno)}, Qt::MoveAction, ""},
               {{url(bueno), url(otro)}, todas, ""},
               {{url(dir.ruta() / "carpeta.s19")}, todas, ""},
               {{url(texto)}, todas, ""},
               {{QUrl::fromEncoded("file://lejos" + raiz + "/c.BIN")}, todas, ""},
               {{QUrl("http://localhost" + raiz + "/c.BIN")}, todas, ""}};
  for (const auto& c : casos) {
    recibido.clear();
    EXPECT_EQ(soltar(c.lugares, c.como), !c.recibido.empty()) << c.recibido;
    EXPECT_EQ(recibido, c.recibido);
  }
  QMessageBox caja(&v);
  caja.open();
  EXPECT_FALSE(soltar({url(bueno)}, todas)) << "a box is open";
}

}  // namespace
