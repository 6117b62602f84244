#include "desktop/vistas_qt.h"

#include <gtest/gtest.h>

#include <QtWidgets>
#include <cmath>

#include "aplicacion.h"
#include "desktop/pintor_filas.h"

namespace {

using namespace morvane;

/// A dump of 256 rows, erased but for a name in row 0x80 and another one in the last row.
struct vistas_qt_test : testing::Test {
  static std::shared_ptr<const volcado> contenido() {
    std::vector<std::uint8_t> bytes(4096, 0xFF);
    for (const std::size_t dir : {0x80F, 0xFF0}) std::ranges::copy(std::string_view("Hola"), bytes.begin() + dir);
    return filas_de_volcado(bytes, 4096);
  }

  QApplication& app = aplicacion();
  frm_buffer b{"frm_buffer_out", "Buffer de Salida", 4560, contenido};
  ventana_qt v{b.ventana, {}};
  QListView* lista = v.findChild<QListView*>("lst_buf_salida");

  void SetUp() override {
    completar(v, b);
    b.ventana.Show();
    v.sincronizar();
    v.show();
    v.activateWindow();
    QApplication::processEvents();
  }
  QWidget& barra() { return *v.findChild<QWidget*>("barra_busqueda"); }
  QString mensaje() { return barra().findChild<QLabel*>("mensaje")->text(); }
  void elegir(const char* texto) {
    for (QAction* una : v.contextual().actions()) {
      if (una->text() == QString::fromUtf8(texto)) return una->trigger();
    }
    FAIL() << texto;
  }
  void teclear(const QString& texto, int tecla = Qt::Key_Return) {
    for (const QChar letra : texto) pulsar(0, letra);
    pulsar(tecla, {});
  }
  static void pulsar(int codigo, const QString& letra) {
    QKeyEvent tecla(QEvent::KeyPress, codigo, Qt::NoModifier, letra);
    QApplication::sendEvent(QApplication::focusWidget(), &tecla);
  }
};

TEST_F(vistas_qt_test, the_bar_takes_nothing_from_the_place_of_the_list_and_covers_no_row) {
  v.resize(700, 500);
  QApplication::processEvents();
  const QRect sitio = lista->geometry();
  const int alto = lista->viewport()->height();
  EXPECT_FALSE(barra().isVisible());
  elegir("&Ir a la dirección...");
  EXPECT_TRUE(barra().isVisible() && QApplication::focusWidget()->inherits("QLineEdit"));
  for (const QSize& tamano : {QSize(700, 500), QSize(600, 300)}) {
    v.resize(tamano);
    QApplication::processEvents();
    const QRect filas = lista->viewport()->geometry().translated(lista->pos());
    EXPECT_EQ(barra().geometry().top(), filas.bottom() + 1);
    EXPECT_TRUE(lista->geometry().contains(barra().geometry()));
  }
  v.resize(700, 500);
  QApplication::processEvents();
  EXPECT_EQ(lista->geometry(), sitio);
  teclear("1000");
  EXPECT_EQ(mensaje(), "La última dirección es 000FFF");
  EXPECT_TRUE(barra().isVisible());
  teclear("x0805");
  EXPECT_FALSE(barra().isVisible());
  EXPECT_TRUE(lista->hasFocus() && lista->currentIndex().row() == 0x80);
  EXPECT_EQ(lista->indexAt({1, 1}).row(), 0x80);
  EXPECT_EQ(lista->viewport()->height(), alto);
}

TEST_F(vistas_qt_test, a_search_chooses_the_row_and_says_in_the_bar_how_it_went) {
  elegir("Buscar &siguiente");
  EXPECT_TRUE(QApplication::focusWidget()->inherits("QLineEdit")) << "nothing to look for yet";
  teclear("48 6F");
  EXPECT_TRUE(lista->currentIndex().row() == 0x80 && mensaje() == "En 00080F");
  v.findChild<QRadioButton*>("texto")->click();
  teclear("hola");
  EXPECT_TRUE(lista->currentIndex().row() == 0x80 && mensaje() == "En 00080F");
  EXPECT_TRUE(QApplication::focusWidget()->inherits("QLineEdit"));
  elegir("Buscar &siguiente");
  EXPECT_TRUE(lista->currentIndex().row() == 0xFF && mensaje() == "En 000FF0");
  elegir("Buscar &siguiente");
  EXPECT_TRUE(lista->currentIndex().row() == 0x80 && mensaje() == "En 00080F, vuelta al principio");
  elegir("Buscar &anterior");
  EXPECT_EQ(mensaje(), "En 000FF0, vuelta al final");
  teclear("s");
  EXPECT_EQ(mensaje(), "No se ha encontrado");
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  b.ventana.Unload();
  v.sincronizar();
  EXPECT_FALSE(barra().isVisible());
}

TEST_F(vistas_qt_test, rows_are_copied_in_their_order_and_read_aloud_as_they_are) {
  const auto fila = [this](std::size_t i) { return QString::fromStdString(b.lst_buf_salida.List.valor()->texto(i)); };
  for (const int i : {0x81, 0x80, 2}) {
    lista->selectionModel()->select(lista->model()->index(i, 0), QItemSelectionModel::Select);
  }
  elegir("&Copiar");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), fila(2) + "\n" + fila(0x80) + "\n" + fila(0x81));
  lista->clearSelection();
  elegir("&Copiar");
  EXPECT_EQ(QGuiApplication::clipboard()->text().size(), 3 * 74 - 1) << "nothing chosen, nothing copied";
  elegir("Copiar &todo");
  EXPECT_EQ(QGuiApplication::clipboard()->text().count('\n'), 255);
  QAccessibleInterface* accesible = QAccessible::queryAccessibleInterface(lista);
  EXPECT_EQ(accesible->child(0x80)->text(QAccessible::Name), fila(0x80));
}

/// Contrast of two colours, from 1 to 21, as the guidelines for accessible contents reckon it.
double contraste(const QColor& uno, const QColor& otro) {
  const auto luz = [](const QColor& c) {
    const auto lineal = [](double parte) {
      return parte <= 0.04045 ? parte / 12.92 : std::pow((parte + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * lineal(c.redF()) + 0.7152 * lineal(c.greenF()) + 0.0722 * lineal(c.blueF()) + 0.05;
  };
  return std::max(luz(uno), luz(otro)) / std::min(luz(uno), luz(otro));
}

TEST(pintor_filas, what_stands_out_can_be_read_on_light_and_dark) {
  for (const auto& [texto, base] : {std::pair{"#000000", "#ffffff"}, {"#ffffff", "#191919"}, {"#eff0f1", "#31363b"}}) {
    QPalette paleta;
    paleta.setColor(QPalette::Text, texto);
    paleta.setColor(QPalette::Base, base);
    const QColor tenue = tinta_de(realce::tenue, paleta);
    EXPECT_GE(contraste(tenue, base), 4.5) << base;
    EXPECT_LE(contraste(tenue, base), 0.6 * contraste(texto, base)) << "it does step back";
    EXPECT_GE(contraste(tinta_de(realce::distinto, paleta), base), 4.5) << base;
  }
}

}  // namespace
