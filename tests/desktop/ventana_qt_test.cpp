#include "desktop/ventana_qt.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>
#include <stdexcept>

#include "aplicacion.h"

namespace morvane {
namespace {

/// A window with one control of each kind.
struct muestra {
  Form ventana{"frm_muestra", "Muestra", 9465, 4110};
  contador_cambios& c = ventana.cambios;
  Menu men_archivo{c, "men_archivo", "&Archivo"}, men_dir{c, "men_dir_1", ""}, separa{c, "separa_1", "-"};
  Toolbar barra{c, "Toolbar"};
  Frame marco{c, "fra_rango", "Rango de lectura", {2100, 1080, 5265, 1875}};
  Label rotulo{c, "Label1", "Dirección desde:", {240, 420, 1800, 285}};
  TextBox caja{c, "txt_desde", {2100, 375, 1440, 360}, &rotulo};
  ComboBox combo{c, "cmb_s_velocity", {"4800", "9600", "19200"}, {2100, 1300, 1440, 360}, &rotulo};
  CommandButton boton{c, "btn_leer", "", {3840, 375, 1185, 840}};
  ProgressBar avance{c, "Progress", 0, 24};
  StatusBar estado{c, "StatusBar", "Lucida Console"};

  muestra() {
    ventana.fija = true;
    ventana.BackColor = 0xE0E0E0;
    men_archivo.lista = {&men_dir, &separa};
    ventana.menus = {&men_archivo};
    for (const char* ayuda : {"Abrir", "Borrar Flash", "Programar dispositivo"}) barra.anadir("abrir", ayuda);
    boton.ToolTipText = "Leer";
    boton.Picture = "leer";
    marco.Controls = {&rotulo, &caja, &combo, &boton};
    estado.anadir(Panel::estilo::texto, 5550);
    estado.anadir(Panel::estilo::texto, 2565).encima = &avance;
    estado.anadir(Panel::estilo::hora, 1350);
    ventana.Controls = {&barra, &marco, &estado};
  }
};

struct ventana_qt_test : testing::Test {
  QApplication& app = aplicacion();
  muestra m;
  int despues = 0;
  ventana_qt v{m.ventana, [this] { ++despues; }};

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
  m.avance.Value = 7;
  m.barra.boton(2).Enabled = false;
  m.marco.Visible = false;
  m.caja.Text = "00FF";
  m.estado.panel(1).Text = "<b>a&b</b>";
  EXPECT_EQ(hijo<QProgressBar>("Progress").value(), 0);
  v.sincronizar();
  EXPECT_EQ(hijo<QProgressBar>("Progress").value(), 7);
  EXPECT_FALSE(hijo<QToolButton>("Toolbar_2").isEnabled());
  EXPECT_TRUE(hijo<QToolButton>("Toolbar_1").isEnabled());
  EXPECT_FALSE(hijo<QGroupBox>("fra_rango").isVisible());
  EXPECT_EQ(hijo<QLineEdit>("txt_desde").text(), "00FF");
  auto& panel = hijo<QLabel>("StatusBar_1");
  EXPECT_EQ(panel.text(), "<b>a&b</b>");
  EXPECT_EQ(panel.textFormat(), Qt::PlainText);
}

TEST_F(ventana_qt_test, only_the_first_ampersand_of_a_menu_caption_marks_a_key) {
  const std::pair<const char*, const char*> casos[] = {
      {"&1 C:\\...C&A\\r&d.s19", "&1 C:\\...C&&A\\r&&d.s19"}, {"a\tb", "a b"}, {"", "men_dir_1"}, {"&Salir", "&Salir"}};
  for (const auto& [rotulo, esperado] : casos) {
    m.men_dir.Caption = rotulo;
    v.sincronizar();
    EXPECT_EQ(hijo<QAction>("men_dir_1").text(), esperado);
  }
}

TEST_F(ventana_qt_test, events_reach_the_handlers_and_what_follows_them) {
  std::vector<int> pulsados;
  m.barra.ButtonClick = [&](int indice) {
    EXPECT_TRUE(v.ocupada());
    pulsados.push_back(indice);
  };
  m.boton.Click = [&] { pulsados.push_back(10); };
  m.men_dir.Click = [&] { pulsados.push_back(20); };
  hijo<QToolButton>("Toolbar_3").click();
  hijo<QPushButton>("btn_leer").click();
  hijo<QAction>("men_dir_1").trigger();
  m.barra.boton(3).Enabled = false;
  v.sincronizar();
  hijo<QToolButton>("Toolbar_3").click();
  EXPECT_EQ(pulsados, (std::vector{3, 10, 20}));
  EXPECT_EQ(despues, 3);
  std::string motivo;
  v.al_fallar = [&](const std::string& cual) { motivo = cual; };
  m.boton.Click = [] { throw std::runtime_error("roto"); };
  hijo<QPushButton>("btn_leer").click();
  EXPECT_EQ(motivo, "roto") << "a handler that throws is reported and goes no further";
  EXPECT_FALSE(v.ocupada());
}

TEST_F(ventana_qt_test, typed_text_is_stored_at_once_and_chooses_no_entry_of_a_combo_box) {
  teclear(hijo<QLineEdit>("txt_desde"), "1A");
  EXPECT_EQ(m.caja.Text.valor(), "1A");
  auto& combo = hijo<QComboBox>("cmb_s_velocity");
  std::string elegidos;
  m.combo.Click = [&] { elegidos += m.combo.Text.valor() + " "; };
  m.combo.Text = "4800";
  v.sincronizar();
  combo.lineEdit()->selectAll();
  teclear(*combo.lineEdit(), "9600\r");
  QFocusEvent fuera(QEvent::FocusOut);
  QApplication::sendEvent(combo.lineEdit(), &fuera);
  EXPECT_EQ(m.combo.Text.valor(), "9600");
  EXPECT_EQ(elegidos, "");
  QKeyEvent flecha(QEvent::KeyPress, Qt::Key_Down, Qt::NoModifier);
  QApplication::sendEvent(&combo, &flecha);
  EXPECT_EQ(elegidos, "9600 ");
}

TEST_F(ventana_qt_test, stays_open_until_it_may_go) {
  bool puede = false;
  v.puede_cerrarse = [&] { return puede; };
  v.show();
  v.close();
  EXPECT_TRUE(v.isVisible());
  puede = true;
  v.close();
  EXPECT_FALSE(v.isVisible());
}

TEST_F(ventana_qt_test, everything_that_can_be_operated_has_a_name_and_the_keyboard_reaches_it) {
  const std::pair<const char*, const char*> nombres[] = {
      {"Toolbar_1", "Abrir"}, {"Toolbar_2", "Borrar Flash"}, {"txt_desde", "Dirección desde:"}, {"btn_leer", "Leer"}};
  for (const auto& [objeto, nombre] : nombres) {
    const auto& control = hijo<QWidget>(objeto);
    EXPECT_EQ(control.accessibleName(), QString::fromUtf8(nombre));
    EXPECT_TRUE(control.focusPolicy() & Qt::TabFocus) << objeto;
  }
}

/// From small to three times the usual size.
TEST(ventana_con_letra, is_of_fixed_size_and_cuts_nothing) {
  aplicacion();
  for (const double puntos : {6.0, 9.0, 12.0, 18.0, 27.0}) {
    QFont letra;
    letra.setPointSizeF(puntos);
    QApplication::setFont(letra);
    muestra m;
    m.estado.panel(1).Text = std::string(51, 'm');
    ventana_qt v(m.ventana, {});
    v.show();
    QApplication::processEvents();
    const QSize cliente = v.centralWidget()->size();
    EXPECT_GE(cliente.width(), 631);
    EXPECT_GE(cliente.height(), 274);
    EXPECT_EQ(v.minimumSize(), v.maximumSize());
    for (const char* nombre : {"Label1", "btn_leer", "txt_desde", "StatusBar_1", "StatusBar_3", "fra_rango"}) {
      const auto* control = v.findChild<QWidget*>(nombre);
      EXPECT_GE(control->width(), control->minimumSizeHint().width()) << nombre;
      EXPECT_GE(control->height(), control->minimumSizeHint().height()) << nombre;
      EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry())) << nombre;
    }
    EXPECT_TRUE(v.rect().contains(v.menuBar()->actionGeometry(v.menuBar()->actions().last())));
  }
  QApplication::setFont(QFont());
}

}  // namespace
}  // namespace morvane
