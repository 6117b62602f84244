#include "aplicacion.h"

namespace {

using namespace apoyo;

struct mapa_qt_test : banco_ventana {
  QString ayuda(QPoint donde) {
    QToolTip::showText({0, 0}, "");
    QHelpEvent suceso(QEvent::ToolTip, donde, s.mapa().mapToGlobal(donde));
    QApplication::sendEvent(&s.mapa(), &suceso);
    return QToolTip::text();
  }
  /// Within a cell, found as the user does: by the tool tip.
  QPoint sitio_de(const QString& direcciones) {
    for (int y = 0; y < s.mapa().height(); y += 3) {
      for (int x = 0; x < s.mapa().width(); x += 2) {
        if (ayuda({x, y}).startsWith(direcciones)) return {x, y};
      }
    }
    return {-1, -1};
  }
};

TEST_F(mapa_qt_test, a_cell_tells_its_state_opens_and_is_reached_by_keys) {
  std::vector<std::int32_t> abiertas;
  s.mapa().al_abrir = [&](std::int32_t cual) { abiertas.push_back(cual); };
  const QPoint donde = sitio_de("010200–0103FF");
  EXPECT_TRUE(sitio_de("010000").x() < donde.x());
  EXPECT_TRUE(sitio_de("008200").y() < donde.y());
  EXPECT_EQ(ayuda(donde),
            "010200–0103FF, bloque 010000–017FFF\nNo se sabe qué contiene el chip\nLa imagen está vacía aquí");
  QMouseEvent doble(QEvent::MouseButtonDblClick, donde, s.mapa().mapToGlobal(donde), Qt::LeftButton, Qt::LeftButton,
                    Qt::NoModifier);
  QApplication::sendEvent(&s.mapa(), &doble);
  for (const int tecla : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Down, Qt::Key_Right, Qt::Key_Left, Qt::Key_Return,
                          Qt::Key_Up, Qt::Key_Up, Qt::Key_End, Qt::Key_Return, Qt::Key_Home, Qt::Key_Enter}) {
    pulsar(&s.mapa(), tecla);
  }
  pulsar(&s.mapa(), Qt::Key_End, {}, Qt::ControlModifier);
  pulsar(&s.mapa(), Qt::Key_Return);
  EXPECT_EQ(abiertas, (std::vector<std::int32_t>{0x10200, 0x8000, 0x7E00, 0, 0x3FE00}));
  EXPECT_TRUE(QToolTip::text().startsWith("03FE00–03FFFF")) << "the cursor tells what it stands on";
  auto* leido = QAccessible::queryAccessibleInterface(&s.mapa());
  leido->valueInterface()->setCurrentValue(3);
  EXPECT_TRUE(leido->text(QAccessible::Value).startsWith("000600–0007FF"));
  EXPECT_TRUE(leido->text(QAccessible::Help).startsWith("512 celdas"));
  f.rango.fra_rango.Visible = true;
  v.sincronizar();
  EXPECT_FALSE(s.mapa().isVisible()) << "it gives way to the range";
  EXPECT_EQ(v.focusWidget()->objectName(), "txt_desde") << "it gives way to the range";
}

TEST_F(mapa_qt_test, while_a_command_runs_cells_and_bar_follow_and_at_rest_nothing_is_looked_at) {
  const QPoint donde = sitio_de("010200–0103FF");
  const auto color = [&] { return s.mapa().grab().toImage().pixelColor(donde); };
  auto& barra = hijo<QProgressBar>("Progress");
  EXPECT_FALSE(s.mirando());
  EXPECT_TRUE(color() != QColor(Qt::white));
  f.barra.ButtonClick = [&](int) {
    const orden_en_curso orden(f);
    const labor_en_curso en_curso(f.avance, plat, labor::clase::grabar, 1'000'000);
    f.avance.mapa.borrado();
    QElapsedTimer espera;
    for (espera.start(); barra.text().isEmpty() && espera.elapsed() < 5000;) QApplication::processEvents();
    EXPECT_TRUE(s.mirando());
    EXPECT_EQ(color(), QColor(Qt::white));
    plat.tiempo_de_caja = 60s;
    plat.MsgBox({"", "a box takes no part of it", botones::Aceptar});
    plat.pasar(100s);
    f.avance.labor.hechos = 13'800;
    s.al_volver();
    EXPECT_EQ(barra.text(), "1 % · 138 B/s · 1:59:06");
    EXPECT_LE(barra.fontMetrics().horizontalAdvance(barra.text()), barra.width());
  };
  hijo<QToolButton>("Toolbar_3").click();
  EXPECT_FALSE(s.mirando());
  EXPECT_EQ(barra.text(), "⚠ Interrumpido en 000000");
}

TEST_F(mapa_qt_test, the_toolbar_says_which_board_it_is_and_a_stop_that_waits_stays_down) {
  auto& letrero = hijo<QToolButton>("letrero_puerto");
  auto& detener = hijo<QToolButton>("Toolbar_6");
  f.link.valores.puerto = "COM2";
  f.link.valores.velocidad = "9600";
  s.al_volver();
  EXPECT_EQ(letrero.accessibleName(), "COM2 · 9600. Todavía no se ha hablado con la placa");
  for (QElapsedTimer espera; !letrero.accessibleName().contains("board");) {
    if (!espera.isValid()) espera.start();
    ASSERT_LT(espera.elapsed(), 5000);
    QApplication::processEvents();
  }
  EXPECT_EQ(letrero.accessibleName(), "COM2 · a board · 9600. Todavía no se ha hablado con la placa");
  EXPECT_GE(letrero.x(), detener.geometry().right());
  letrero.click();
  EXPECT_TRUE(f.cfg_pto_serial.ventana.Visible);
  const auto raton = [&](QEvent::Type que) {
    const bool dentro = que == QEvent::MouseButtonPress;
    QMouseEvent suceso(que, {5, 5}, detener.mapToGlobal(QPointF{5, 5}), Qt::LeftButton,
                       dentro ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&detener, &suceso);
  };
  raton(QEvent::MouseButtonPress);
  s.al_volver();
  raton(QEvent::MouseButtonRelease);
  EXPECT_TRUE(f.avance.cancelar) << "a look at the models in between does not take the click away";
  EXPECT_TRUE(detener.isDown());
  f.barra.ButtonClick = [&](int) { f.avance.cancelar = false; };
  hijo<QToolButton>("Toolbar_2").click();
  EXPECT_FALSE(detener.isDown());
}

}  // namespace
