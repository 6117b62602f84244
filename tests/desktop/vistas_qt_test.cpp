#include "desktop/vistas_qt.h"

#include "aplicacion.h"

namespace {

using namespace apoyo;

/// A comparison in which all bytes differ, of which those from 40 to 5F were read.
struct guion_de_dos : banco<guion> {
  Variables_grab variables;
  mapa_flash mapa;
  frm_buffer_comp comp{plat, variables, mapa};
  ventana_qt w{comp.ventana, {}};
  guion_de_dos() {
    std::ranges::fill(variables.buffer_entrada, std::uint8_t{0});
    std::ranges::fill(variables.buffer_salida, std::uint8_t{0xFF});
    variables.dir_max = 0x7F;
    mapa.lectura({0x40, 0x60});
  }
  void TestBody() override {}
};

/// A dump of 256 rows, erased but for a name in row 0x80 and another one in the last row.
struct vistas_qt_test : testing::Test {
  static std::shared_ptr<const volcado> contenido() {
    std::vector<std::uint8_t> bytes(4096, 0xFF);
    for (const std::size_t dir : {0x80F, 0xFF0}) std::ranges::copy(std::string_view("Hola"), bytes.begin() + dir);
    return filas_de_volcado(bytes, 4096);
  }
  QApplication& app = aplicacion();
  frm_buffer b{"frm_buffer_out", "Buffer de Salida", 4560, contenido, [] { return std::string("Nothing"); }};
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

TEST_F(vistas_qt_test, an_address_brings_its_row_to_the_top_and_a_search_says_in_the_bar_how_it_went) {
  elegir("&Ir a la dirección...");
  EXPECT_EQ(tras("1000\r"), "0 La última dirección es 000FFF");
  EXPECT_EQ(tras("08g\r"), "0 Hasta seis cifras de 0 a F") << "no letter is swallowed";
  EXPECT_EQ(barra().y(), lista->y() + lista->viewport()->geometry().bottom() + 1) << "it covers no row";
  EXPECT_EQ(tras("0x0805\r").substr(0, 4), "128 ");
  EXPECT_FALSE(barra().isVisible());
  EXPECT_TRUE(lista->hasFocus());
  EXPECT_EQ(lista->indexAt({1, 1}).row(), 0x80);
  elegir("Buscar &siguiente");
  EXPECT_EQ(tras("48 6F\r"), "128 En 00080F");
  v.findChild<QRadioButton*>("texto")->click();
  EXPECT_EQ(tras("hola\r"), "128 En 00080F");
  elegir("Buscar &siguiente");
  EXPECT_EQ(tras(""), "255 En 000FF0");
  elegir("Buscar &anterior");
  EXPECT_EQ(tras(""), "128 En 00080F");
  EXPECT_EQ(tras("s\r"), "128 No se ha encontrado");
  v.findChild<QRadioButton*>("bytes")->click();
  EXPECT_EQ(tras("4\r"), "128 Dos cifras de 0 a F por byte; si es un texto, elija Texto");
  b.ventana.Unload();
  v.sincronizar();
  EXPECT_FALSE(barra().isVisible());
}

TEST_F(vistas_qt_test, rows_are_whole_at_any_height_and_where_there_are_none_the_list_says_why) {
  for (const int alto : {300, 307, 311}) {
    v.resize(v.width(), alto);
    EXPECT_EQ(lista->viewport()->height() % lista->sizeHintForRow(0), 0) << alto;
    EXPECT_GT(lista->viewport()->height(), lista->height() / 2) << alto;
  }
  for (const int valor : {5, 100, 1000}) {
    lista->verticalScrollBar()->setValue(valor);
    EXPECT_EQ(lista->verticalScrollBar()->value() % lista->sizeHintForRow(0), 0) << valor;
  }
  lista->verticalScrollBar()->setValue(lista->verticalScrollBar()->maximum());
  EXPECT_EQ(lista->indexAt({1, lista->viewport()->height() - 1}).row(), 255) << "the end can be reached";
  const auto* vacia = lista->findChild<QLabel*>("vacia");
  EXPECT_FALSE(vacia->isVisible());
  frm_buffer otro{"frm_buffer_in", "Buffer de Entrada", 4545, [] { return filas_de_volcado({}, 0); },
                  [] { return std::string("Nothing"); }};
  ventana_qt w{otro.ventana, {}};
  completar(w, otro);
  otro.ventana.Show();
  w.sincronizar();
  w.show();
  EXPECT_TRUE(w.findChild<QLabel*>("vacia")->isVisible());
  EXPECT_EQ(w.findChild<QLabel*>("vacia")->text(), "Nothing");
  pulsar(&w, Qt::Key_Escape);
  EXPECT_FALSE(w.isVisible());
}

TEST_F(vistas_qt_test, a_difference_leads_to_its_address_and_a_view_begins_with_what_was_read) {
  guion_de_dos d;
  std::vector<std::int32_t> vistas;
  completar(d.w, d.comp, [&](std::int32_t dir) { vistas.push_back(dir); });
  d.comp.ventana.Show();
  d.w.sincronizar();
  d.w.show();
  auto* suya = d.w.findChild<QListView*>("lst_compara");
  EXPECT_EQ(suya->currentIndex().row(), 0x40);
  emit suya->doubleClicked(suya->currentIndex());
  EXPECT_EQ(vistas, std::vector{0x40});
}

TEST_F(vistas_qt_test, rows_are_copied_in_their_order_and_read_aloud_as_they_are) {
  const auto fila = [this](std::size_t i) { return QString::fromStdString(b.lst_buf_salida.List.valor()->texto(i)); };
  for (const int i : {0x81, 2}) {
    lista->selectionModel()->select(lista->model()->index(i, 0), QItemSelectionModel::Select);
  }
  elegir("&Copiar");
  EXPECT_EQ(QGuiApplication::clipboard()->text(), fila(2) + "\n" + fila(0x81));
  elegir("Copiar &todo");
  EXPECT_EQ(QGuiApplication::clipboard()->text().count('\n'), 255);
  EXPECT_EQ(QAccessible::queryAccessibleInterface(lista)->child(0x80)->text(QAccessible::Name), fila(0x80));
}

}  // namespace
