#include <cmath>

#include "aplicacion.h"
#include "desktop/pincel_mapa.h"

namespace {

using namespace apoyo;
using terna = std::array<double, 3>;
/// What one eye makes of a colour in linear light (Machado, Oliveira and Fernandes, 2009, full severity).
using ojo = std::array<terna, 3>;
constexpr ojo ojos[] = {
    {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}},
    {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}},
    {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}},
    {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}};

/// The mean of what a cell is drawn with, as an eye sees it.
terna visto(aspecto cual, const ojo& quien) {
  QImage foto(7, 20, QImage::Format_RGB32);
  QPainter pintor(&foto);
  pintar_celda(pintor, {0, 0, 8, 20}, 1, cual, false, false);
  pintor.end();
  terna media{}, v{};
  for (int i = 0; i < 7 * 20; ++i) {
    const QColor c = foto.pixelColor(i % 7, i / 7);
    const terna canales{c.redF(), c.greenF(), c.blueF()};
    for (std::size_t k = 0; k < 3; ++k) media[k] += std::pow(canales[k], 2.2) / (7 * 20);
  }
  for (std::size_t k = 0; k < 3; ++k) {
    for (std::size_t j = 0; j < 3; ++j) v[k] += quien[k][j] * media[j];
    v[k] = std::pow(std::clamp(v[k], 0.0, 1.0), 1 / 2.2);
  }
  return v;
}

TEST(pincel_mapa, every_eye_tells_the_aspects_apart) {
  aplicacion();
  for (const ojo& quien : ojos) {
    for (int i = 0; i < aspectos; ++i) {
      for (int j = 0; j < i; ++j) {
        const terna a = visto(static_cast<aspecto>(i), quien), b = visto(static_cast<aspecto>(j), quien);
        EXPECT_GT(std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]), 0.15) << (&quien - ojos) << i << j;
      }
    }
  }
}

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
  EXPECT_EQ(s.mapa().geometry(), QRect(QPoint(0, hijo("Toolbar").geometry().bottom() + 1),
                                       QPoint(v.centralWidget()->width() - 1, hijo("StatusBar").y() - 1)));
  std::vector<std::int32_t> abiertas;
  s.mapa().al_abrir = [&](std::int32_t cual) { abiertas.push_back(cual); };
  const QPoint donde = sitio_de("010200–0103FF");
  EXPECT_EQ(ayuda(donde),
            "010200–0103FF, bloque 010000–017FFF\nNo se sabe qué contiene el chip\nLa imagen está vacía aquí");
  QMouseEvent doble(QEvent::MouseButtonDblClick, donde, s.mapa().mapToGlobal(donde), Qt::LeftButton, Qt::LeftButton,
                    Qt::NoModifier);
  QApplication::sendEvent(&s.mapa(), &doble);
  for (const int cual : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_Return, Qt::Key_Up,
                         Qt::Key_Up, Qt::Key_End, Qt::Key_Return, Qt::Key_Home, Qt::Key_Enter}) {
    pulsar(&s.mapa(), cual);
  }
  pulsar(&s.mapa(), Qt::Key_End, {}, Qt::ControlModifier);
  for (const int cual : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Return}) pulsar(&s.mapa(), cual);
  EXPECT_EQ(abiertas, (std::vector<std::int32_t>{0x10200, 0x8200, 0x7E00, 0, 0x3FE00}));
  EXPECT_TRUE(QToolTip::text().startsWith("03FE00–03FFFF")) << "the cursor tells what it stands on";
  f.rango.fra_rango.Visible = true;
  v.sincronizar();
  EXPECT_FALSE(s.mapa().isVisible()) << "it gives way to the range";
}

TEST_F(mapa_qt_test, while_a_command_runs_cells_and_bar_follow_and_at_rest_nothing_is_looked_at) {
  const QPoint donde = sitio_de("010200–0103FF");
  const auto color = [&] { return s.mapa().grab().toImage().pixelColor(donde); };
  auto& barra = hijo<QProgressBar>("Progress");
  EXPECT_TRUE(!s.mirando() && color() != QColor(Qt::white));
  f.barra.ButtonClick = [&](int) {
    const orden_en_curso orden(f);
    const labor_en_curso labor(f.progreso, plat, marcha::labor::grabar, 1'000'000);
    f.progreso.mapa.borrado();
    QElapsedTimer espera;
    for (espera.start(); barra.text().isEmpty() && espera.elapsed() < 5000;) QApplication::processEvents();
    EXPECT_TRUE(s.mirando() && color() == QColor(Qt::white));
    plat.pasar(100s);
    f.progreso.ritmo.hechos = 13'800;
    s.al_volver();
    EXPECT_EQ(barra.text(), "1 % · 138 B/s · 1:59:06");
    EXPECT_LE(barra.fontMetrics().horizontalAdvance(barra.text()), barra.width());
  };
  hijo<QToolButton>("Toolbar_3").click();
  EXPECT_TRUE(!s.mirando() && barra.text() == "Duración: 1:40");
}

}  // namespace
