#include <gtest/gtest.h>

#include <QtWidgets>

#include "aplicacion.h"
#include "desktop/ventana_qt.h"
#include "shell/frm_buffer.h"

namespace {

using namespace morvane;

/// 73 characters a row, with a mark under the first hexadecimal heading or, in odd rows, under the first character.
struct marcas final : volcado {
  marcas() : volcado({}) {}
  std::size_t cuantas() const override { return 262144; }
  std::string texto(std::size_t indice) const override {
    ++pedidas;
    return std::string(indice % 2 == 0 ? 8 : 57, ' ') + "0" + std::string(indice % 2 == 0 ? 64 : 15, '.');
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

TEST(listas, rows_are_made_when_shown_under_their_headings_and_the_window_leads_to_list_and_menu) {
  aplicacion();
  for (const double puntos : {6.0, 9.0, 10.5, 12.0}) {
    QFont letra;
    letra.setPointSizeF(puntos);
    QApplication::setFont(letra);
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
    const double punto = v.centralWidget()->width() / 9450.0;
    v.resize(1200, 900);
    QApplication::processEvents();
    EXPECT_NEAR(vista->width(), v.frameGeometry().width() - 300 * punto, 2);
    vista->scrollToBottom();
    v.grab();
    EXPECT_LT(contenido->pedidas, 300);
    QContextMenuEvent tecla(QContextMenuEvent::Keyboard, {-900, -900}, {-900, -900});
    QApplication::sendEvent(vista, &tecla);
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu != nullptr && v.geometry().contains(menu->pos()));
    EXPECT_TRUE(menu->actions().contains(v.findChild<QAction*>("men_comparar")) && menu->close());
  }
  QApplication::setFont(QFont());
}

}  // namespace
