#include "desktop/vistas_qt.h"

#include "aplicacion.h"
#include "desktop/pintor_filas.h"

namespace {

using namespace apoyo;

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
  void elegir(const char* texto) {
    for (QAction* una : v.contextual().actions()) {
      if (una->text() == QString::fromUtf8(texto)) return una->trigger();
    }
    FAIL() << texto;
  }
  /// Types into what has the focus; then the row that is chosen and what the bar says.
  std::string tras(const char* texto) {
    for (const QChar letra : QString(texto)) teclear(QApplication::focusWidget(), letra);
    return std::to_string(lista->currentIndex().row()) + " " +
           barra().findChild<QLabel*>("mensaje")->text().toStdString();
  }
};

TEST_F(vistas_qt_test, the_bar_takes_nothing_from_the_place_of_the_list_and_covers_no_row) {
  v.resize(600, 300);
  QApplication::processEvents();
  const QRect sitio = lista->geometry();
  const int alto = lista->viewport()->height();
  elegir("&Ir a la dirección...");
  EXPECT_EQ(barra().y(), lista->y() + lista->viewport()->geometry().bottom() + 1);
  EXPECT_TRUE(lista->geometry() == sitio && sitio.contains(barra().geometry()));
  EXPECT_EQ(tras("1000\r"), "0 La última dirección es 000FFF");
  EXPECT_TRUE(barra().isVisible());
  EXPECT_EQ(tras("x0805\r").substr(0, 4), "128 ");
  EXPECT_TRUE(!barra().isVisible() && lista->hasFocus() && lista->indexAt({1, 1}).row() == 0x80);
  EXPECT_EQ(lista->viewport()->height(), alto);
}

TEST_F(vistas_qt_test, a_search_chooses_the_row_and_says_in_the_bar_how_it_went) {
  elegir("Buscar &siguiente");
  EXPECT_EQ(tras("48 6F\r"), "128 En 00080F");
  v.findChild<QRadioButton*>("texto")->click();
  EXPECT_EQ(tras("hola\r"), "128 En 00080F");
  elegir("Buscar &siguiente");
  EXPECT_EQ(tras(""), "255 En 000FF0");
  elegir("Buscar &siguiente");
  EXPECT_EQ(tras(""), "128 En 00080F, vuelta al principio");
  elegir("Buscar &anterior");
  EXPECT_EQ(tras(""), "255 En 000FF0, vuelta al final");
  EXPECT_EQ(tras("s\r"), "255 No se ha encontrado");
  b.ventana.Unload();
  v.sincronizar();
  EXPECT_FALSE(barra().isVisible());
}

TEST_F(vistas_qt_test, rows_are_copied_in_their_order_and_read_aloud_as_they_are) {
  const auto fila = [this](std::size_t i) { return QString::fromStdString(b.lst_buf_salida.List.valor()->texto(i)); };
  const auto copiado = [] { return QGuiApplication::clipboard()->text(); };
  for (const int i : {0x81, 2}) {
    lista->selectionModel()->select(lista->model()->index(i, 0), QItemSelectionModel::Select);
  }
  elegir("&Copiar");
  EXPECT_EQ(copiado(), fila(2) + "\n" + fila(0x81));
  lista->clearSelection();
  elegir("&Copiar");
  EXPECT_EQ(copiado().size(), 2 * 74 - 1) << "nothing chosen, nothing copied";
  elegir("Copiar &todo");
  EXPECT_EQ(copiado().count('\n'), 255);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(lista)->child(0x80)->text(QAccessible::Name), fila(0x80));
}

/// 73 characters a row, with a mark under the first hexadecimal heading or, in odd rows, under the first character.
struct marcas final : volcado {
  marcas() : volcado({}) {}
  std::size_t cuantas() const override { return 262144; }
  std::string texto(std::size_t i) const override {
    ++pedidas;
    return std::string(i % 2 == 0 ? 8 : 57, ' ') + "0" + std::string(i % 2 == 0 ? 64 : 15, '.');
  }
  std::vector<parte_realzada> realces(std::size_t /*indice*/) const override { return {}; }
  mutable int pedidas = 0;
};

/// Where the leftmost dark point of a rectangle is.
int tinta(const QImage& foto, const QRect& sitio) {
  for (int x = sitio.left(); x <= sitio.right(); ++x) {
    for (int y = sitio.top(); y <= sitio.bottom(); ++y) {
      if (qGray(foto.pixel(x, y)) < 128) return x;
    }
  }
  return -1;
}

TEST(listas, rows_are_made_when_shown_and_stand_under_their_headings) {
  for (const double puntos : {6.0, 9.0, 12.0}) {
    aplicacion();
    const con_letra letra(puntos);
    auto contenido = std::make_shared<marcas>();
    frm_buffer b{"frm_buffer_out", "Buffer de Salida", 4560, [&contenido] { return contenido; }};
    b.ventana.Show();
    ventana_qt v(b.ventana, {});
    v.show();
    auto* vista = v.findChild<QListView*>("lst_buf_salida");
    const QImage foto = v.centralWidget()->grab().toImage();
    for (const auto& [fila, rotulo] : {std::pair{0, "Label2"}, std::pair{1, "Label4"}}) {
      const QRect una = vista->visualRect(vista->model()->index(fila, 0)).translated(vista->pos() + QPoint(1, 1));
      const int titulo = tinta(foto, v.findChild<QLabel*>(rotulo)->geometry());
      EXPECT_NEAR(tinta(foto, una.adjusted(1, 1, 0, -1)), titulo, 1) << rotulo << ", letra de " << puntos;
    }
    EXPECT_EQ(vista->horizontalScrollBar()->maximum(), 0) << "a whole row fits";
    vista->scrollToBottom();
    v.grab();
    EXPECT_LT(contenido->pedidas, 300);
    QContextMenuEvent tecla(QContextMenuEvent::Keyboard, {-900, -900}, {-900, -900});
    QApplication::sendEvent(vista, &tecla);
    QWidget* menu = QApplication::activePopupWidget();
    EXPECT_TRUE(menu != nullptr && v.geometry().contains(menu->pos()) && menu->close()) << "within the window";
  }
}

TEST(pintor_filas, what_stands_out_can_be_read_on_light_and_dark) {
  for (const auto& [texto, base] : {std::pair{"#000000", "#ffffff"}, {"#ffffff", "#191919"}, {"#eff0f1", "#31363b"}}) {
    QPalette paleta;
    paleta.setColor(QPalette::Text, texto);
    paleta.setColor(QPalette::Base, base);
    const auto separa = [&](const QColor& tinta) { return std::abs(qGray(tinta.rgb()) - qGray(QColor(base).rgb())); };
    const int tenue = separa(tinta_de(realce::tenue, paleta));
    EXPECT_TRUE(tenue > 100 && tenue < 0.65 * separa(texto)) << base << " it does step back";
    EXPECT_GT(separa(tinta_de(realce::distinto, paleta)), 100) << base;
  }
}

}  // namespace
