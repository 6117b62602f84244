#include "desktop/teclado.h"

#include <gtest/gtest.h>

#include "desktop/aplicacion.h"

using namespace morvane;
using namespace std::chrono_literals;

namespace {

struct teclado_test : testing::Test {
  teclado_test() {
    ventana.setLayout(new QVBoxLayout);
    ventana.layout()->addWidget(&boton);
    ventana.layout()->addWidget(&texto);
    ventana.show();
    ventana.activateWindow();
    QApplication::processEvents();
    boton.setFocus();
    QObject::connect(&boton, &QAbstractButton::pressed, [this] { ++pulsadas; });
  }
  void dar(QEvent::Type tipo, int tecla, const QString& letra, bool marcada, Qt::KeyboardModifiers con = {}) {
    QKeyEvent suceso(tipo, tecla, con, static_cast<quint32>(tecla), 0, 0, letra, marcada);
    suceso.setTimestamp(static_cast<quint64>(hora.count() / 1000));
    QApplication::sendEvent(ventana.windowHandle(), &suceso);
  }
  /// How many of the presses of Space got to the button.
  int espacio(bool marcada = false) {
    pulsadas = 0;
    boton.setDown(false);
    dar(QEvent::KeyPress, Qt::Key_Space, " ", marcada);
    return pulsadas;
  }
  void soltar(bool marcada = false) { dar(QEvent::KeyRelease, Qt::Key_Space, " ", marcada); }
  /// What a letter in the text field leaves of itself.
  QString letra(Qt::KeyboardModifiers con = {}) {
    texto.clear();
    dar(QEvent::KeyPress, Qt::Key_N, "n", false, con);
    dar(QEvent::KeyRelease, Qt::Key_N, "n", false, con);
    return texto.text();
  }

  QApplication& app = apoyo::aplicacion();
  QWidget ventana;
  QPushButton boton;
  QLineEdit texto;
  instante hora = 100s;
  int pulsadas = 0;
  teclado t{[this] { return hora; }};
};

TEST_F(teclado_test, a_held_key_starts_nothing_again_marked_or_not) {
  EXPECT_EQ(espacio(), 1);
  hora += 500ms;
  EXPECT_EQ(espacio(true), 0);
  // As behind a box: a release and a press of the same moment, without the mark.
  for (int i = 0; i < 3; ++i) {
    hora += 30ms;
    soltar();
    EXPECT_EQ(espacio(), 0);
  }
  soltar();
  hora += 60ms;
  EXPECT_EQ(espacio(), 1) << "a fresh press";
  boton.clearFocus();
  texto.setFocus();
  dar(QEvent::KeyPress, Qt::Key_A, "a", false);
  dar(QEvent::KeyPress, Qt::Key_A, "a", true);
  EXPECT_EQ(texto.text(), "aa") << "text is typed as ever";
}

TEST_F(teclado_test, a_box_takes_no_key_at_first_and_none_that_is_held) {
  espacio();
  t.llega_caja();
  hora += 400ms;
  EXPECT_EQ(letra(), "");
  hora += 200ms;
  EXPECT_EQ(espacio(true), 0) << "down since before";
  soltar();
  EXPECT_EQ(espacio(), 0) << "and still";
  soltar();
  hora += 60ms;
  EXPECT_EQ(espacio(), 1);
  t.se_va_caja();
}

TEST_F(teclado_test, a_box_over_typing_waits_for_a_pause_and_takes_no_bare_letter) {
  texto.setFocus();
  t.llega_caja();
  for (int i = 0; i < 3; ++i) {
    hora += 400ms;
    EXPECT_EQ(letra(), "");
  }
  hora += 600ms;
  EXPECT_EQ(letra(), "");
  boton.setFocus();
  dar(QEvent::KeyPress, Qt::Key_Space, " ", false);
  EXPECT_EQ(pulsadas, 1) << "other keys do";
  t.se_va_caja();
  texto.setFocus();
  EXPECT_EQ(letra(), "n");
}

}  // namespace
