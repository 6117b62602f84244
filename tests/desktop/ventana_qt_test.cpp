#include "desktop/ventana_qt.h"

#include <QtWidgets>
#include <stdexcept>

#include "aplicacion.h"
#include "apoyo/banco.h"
#include "apoyo/guion.h"
#include "shell/frm_principal.h"

namespace {

using namespace apoyo;

/// The real forms, in windows of their own on the twin.
struct ventana_qt_test : banco<guion> {
  QApplication& app = aplicacion();
  Variables_grab variables;
  frm_principal f{plat, ficheros, linea, variables};
  int despues = 0;
  ventana_qt v{f.ventana, [this] { ++despues; }};

  template <class W>
  W& hijo(const char* nombre) {
    auto* encontrado = v.findChild<W*>(QString::fromUtf8(nombre));
    if (encontrado == nullptr) throw std::runtime_error(nombre);
    return *encontrado;
  }
  static void teclear(QWidget& donde, const QString& texto) {
    for (const QChar letra : texto) {
      const int codigo = letra == '\r' ? int{Qt::Key_Return} : int{letra.unicode()};
      QKeyEvent tecla(QEvent::KeyPress, codigo, Qt::NoModifier, letra);
      QApplication::sendEvent(&donde, &tecla);
    }
  }
};

TEST_F(ventana_qt_test, changed_properties_show_after_a_synchronisation) {
  v.show();
  f.progreso.Progress.Value = 7;
  f.barra.boton(2).Enabled = false;
  f.rango.fra_rango.Visible = false;
  f.rango.txt_desde.Text = "00FF";
  f.estado.panel(1).Text = "<b>a&b</b>";
  f.estado.panel(1).ToolTipText = "<b>a&b</b>";
  EXPECT_EQ(hijo<QProgressBar>("Progress").value(), 0);
  v.sincronizar();
  EXPECT_EQ(hijo<QProgressBar>("Progress").value(), 7);
  EXPECT_TRUE(hijo<QToolButton>("Toolbar_1").isEnabled() && !hijo<QToolButton>("Toolbar_2").isEnabled());
  EXPECT_TRUE(!hijo<QGroupBox>("fra_rango").isVisible() && hijo<QLineEdit>("txt_desde").text() == "00FF");
  const auto& panel = hijo<QLabel>("StatusBar_1");
  EXPECT_TRUE(panel.text() == "<b>a&b</b>" && panel.textFormat() == Qt::PlainText);
  EXPECT_EQ(QTextDocumentFragment::fromHtml(panel.toolTip()).toPlainText(), "<b>a&b</b>");
}

TEST_F(ventana_qt_test, only_the_first_ampersand_of_a_menu_caption_marks_a_key) {
  const std::pair<const char*, const char*> casos[] = {
      {"&1 C:\\...C&A\\r&d.s19", "&1 C:\\...C&&A\\r&&d.s19"}, {"a\tb", "a b"}, {"", "men_dir_1"}, {"&Salir", "&Salir"}};
  for (const auto& [rotulo, esperado] : casos) {
    f.menu.men_dir[0].Caption = rotulo;
    v.sincronizar();
    EXPECT_EQ(hijo<QAction>("men_dir_1").text(), esperado);
  }
}

TEST_F(ventana_qt_test, text_that_an_assistive_tool_enters_reaches_the_program) {
  auto& caja = hijo<QLineEdit>("txt_desde");
  QAccessible::queryAccessibleInterface(&caja)->setText(QAccessible::Value, "001230");
  EXPECT_EQ(f.rango.txt_desde.Text.valor(), "001230");
}

TEST_F(ventana_qt_test, what_stands_behind_a_box_cannot_be_pressed_by_an_assistive_tool) {
  int pulsados = 0;
  f.barra.ButtonClick = [&](int) { ++pulsados; };
  auto& boton = hijo<QToolButton>("Toolbar_2");
  {
    QDialog caja;
    caja.setModal(true);
    caja.show();
    boton.click();
    EXPECT_EQ(pulsados, 0);
  }
  boton.click();
  EXPECT_EQ(pulsados, 1);
}

TEST_F(ventana_qt_test, events_reach_the_handlers_and_what_follows_them) {
  std::string pulsados;
  f.barra.ButtonClick = [&](int indice) { pulsados += std::to_string(indice) + (v.ocupada() ? "!" : ""); };
  f.rango.btn_leer.Click = [&] { pulsados += "b"; };
  f.menu.men_dir[0].Click = [&] { pulsados += "m"; };
  hijo<QToolButton>("Toolbar_3").click();
  hijo<QPushButton>("btn_leer").click();
  hijo<QAction>("men_dir_1").trigger();
  f.barra.boton(3).Enabled = false;
  v.sincronizar();
  hijo<QToolButton>("Toolbar_3").click();
  EXPECT_EQ(pulsados, "3!bm");
  EXPECT_EQ(despues, 3);
  std::string motivo;
  v.al_fallar = [&](const std::string& cual) { motivo = cual; };
  f.rango.btn_leer.Click = [] { throw std::runtime_error("roto"); };
  hijo<QPushButton>("btn_leer").click();
  EXPECT_EQ(motivo, "roto") << "a handler that throws is reported and goes no further";
  EXPECT_FALSE(v.ocupada());
}

TEST_F(ventana_qt_test, typed_text_is_stored_at_once_and_chooses_no_entry_of_a_combo_box) {
  teclear(hijo<QLineEdit>("txt_desde"), "1A");
  EXPECT_EQ(f.rango.txt_desde.Text.valor(), "1A");
  auto& d = f.cfg_pto_serial;
  ventana_qt dialogo(d.ventana, {});
  auto& combo = *dialogo.findChild<QComboBox*>("cmb_s_velocity");
  std::string elegidos;
  d.cmb_s_velocity.Click = [&] { elegidos += d.cmb_s_velocity.Text.valor() + " "; };
  d.cmb_s_velocity.Text = "4800";
  dialogo.sincronizar();
  combo.lineEdit()->selectAll();
  teclear(*combo.lineEdit(), "9600\r");
  QFocusEvent fuera(QEvent::FocusOut);
  QApplication::sendEvent(combo.lineEdit(), &fuera);
  EXPECT_EQ(d.cmb_s_velocity.Text.valor(), "9600");
  EXPECT_EQ(elegidos, "");
  QKeyEvent flecha(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
  QApplication::sendEvent(&combo, &flecha);
  EXPECT_EQ(elegidos, "9600 ");
}

TEST_F(ventana_qt_test, stays_open_until_it_may_go) {
  v.show();
  for (const bool puede : {false, true}) {
    v.puede_cerrarse = [&] { return puede; };
    v.close();
    EXPECT_NE(v.isVisible(), puede);
  }
}

TEST_F(ventana_qt_test, everything_that_can_be_operated_has_a_name_and_the_keyboard_reaches_it) {
  const std::pair<const char*, const char*> nombres[] = {
      {"Toolbar_1", "Abrir"}, {"Toolbar_2", "Borrar Flash"}, {"txt_desde", "Dirección desde:"}, {"btn_leer", "Leer"}};
  for (const auto& [objeto, nombre] : nombres) {
    const auto& control = hijo<QWidget>(objeto);
    EXPECT_EQ(control.accessibleName(), QString::fromUtf8(nombre));
    EXPECT_TRUE(control.focusPolicy() & Qt::TabFocus) << objeto;
  }
  for (const QWidget* control : v.centralWidget()->findChildren<QWidget*>()) {
    EXPECT_TRUE(control->focusPolicy() == Qt::NoFocus || !control->accessibleName().isEmpty());
  }
}

/// From small to three times the usual size.
TEST_F(ventana_qt_test, is_of_fixed_size_and_cuts_nothing) {
  f.rango.fra_rango.Visible = true;
  f.estado.panel(1).Text = std::string(51, 'm');
  for (const double puntos : {6.0, 9.0, 12.0, 18.0, 27.0}) {
    QFont letra;
    letra.setPointSizeF(puntos);
    QApplication::setFont(letra);
    ventana_qt otra(f.ventana, {});
    otra.show();
    QApplication::processEvents();
    const QSize cliente = otra.centralWidget()->size();
    EXPECT_TRUE(cliente.width() >= 631 && cliente.height() >= 274 && otra.minimumSize() == otra.maximumSize());
    for (const char* nombre : {"Label1", "btn_leer", "txt_desde", "StatusBar_1", "StatusBar_3", "fra_rango"}) {
      const auto* control = otra.findChild<QWidget*>(nombre);
      EXPECT_EQ(control->size(), control->size().expandedTo(control->minimumSizeHint())) << nombre;
      EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry())) << nombre;
    }
    EXPECT_TRUE(
        otra.rect().contains(otra.menuBar()->actionGeometry(otra.findChild<QMenu*>("men_opciones")->menuAction())));
  }
  QApplication::setFont(QFont());
}

TEST_F(ventana_qt_test, no_other_window_cuts_a_text_either) {
  for (const double puntos : {6.0, 9.0, 12.0, 15.0, 20.0, 27.0}) {
    QFont letra;
    letra.setPointSizeF(puntos);
    QApplication::setFont(letra);
    for (Form* forma : f.otras_ventanas()) {
      forma->Show();
      ventana_qt otra(*forma, {});
      otra.show();
      for (const auto* rotulo : otra.findChildren<QLabel*>()) {
        const QRect falta =
            rotulo->fontMetrics().boundingRect(rotulo->contentsRect(), Qt::TextWordWrap, rotulo->text());
        EXPECT_TRUE(falta.width() <= rotulo->width() && falta.height() <= rotulo->height())
            << qPrintable(rotulo->text()) << ", " << puntos;
      }
      for (const auto* boton : otra.findChildren<QPushButton*>()) {
        EXPECT_EQ(boton->size(), boton->size().expandedTo(boton->minimumSizeHint())) << qPrintable(boton->text());
      }
    }
  }
  QApplication::setFont(QFont());
}

}  // namespace
