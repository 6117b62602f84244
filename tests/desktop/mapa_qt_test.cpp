#include "desktop/mapa_qt.h"

#include <QtWidgets>
#include <cmath>

#include "aplicacion.h"
#include "apoyo/banco.h"
#include "apoyo/guion.h"
#include "desktop/pincel_mapa.h"
#include "desktop/seguimiento.h"

namespace {

using namespace apoyo;

using terna = std::array<double, 3>;

/// What one eye makes of a colour, in linear light: the three channels after the eye's matrix. Machado, Oliveira and
/// Fernandes, 2009, full severity.
struct ojo {
  const char* nombre;
  std::array<terna, 3> matriz;
};
constexpr ojo ojos[] = {
    {"all colours", {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
    {"protanopia",
     {{{0.152286, 1.052583, -0.204868}, {0.114503, 0.786281, 0.099216}, {-0.003882, -0.048116, 1.051998}}}},
    {"deuteranopia",
     {{{0.367322, 0.860646, -0.227968}, {0.280085, 0.672501, 0.047413}, {-0.011820, 0.042940, 0.968881}}}},
    {"tritanopia",
     {{{1.255528, -0.076749, -0.178779}, {-0.078411, 0.930809, 0.147602}, {0.004733, 0.691367, 0.303900}}}}};

double lineal(double canal) {
  return canal <= 0.04045 ? canal / 12.92 : std::pow((canal + 0.055) / 1.055, 2.4);
}

/// The mean of what a cell is drawn with, its bars left out, as CIE L*a*b*.
terna lab_de(aspecto cual, const ojo& quien) {
  QImage foto(8, 20, QImage::Format_RGB32);
  QPainter pintor(&foto);
  pintar_celda(pintor, foto.rect(), 1, cual, false, false);
  pintor.end();
  terna media{};
  for (int i = 0; i < 7 * 20; ++i) {
    const QColor c = foto.pixelColor(i % 7, i / 7);
    const terna canales{lineal(c.redF()), lineal(c.greenF()), lineal(c.blueF())};
    for (std::size_t k = 0; k < 3; ++k) media[k] += canales[k] / (7 * 20);
  }
  terna v{};
  for (std::size_t k = 0; k < 3; ++k) {
    for (std::size_t j = 0; j < 3; ++j) v[k] += quien.matriz[k][j] * media[j];
    v[k] = std::clamp(v[k], 0.0, 1.0);
  }
  const auto f = [](double t) { return t > 0.008856 ? std::cbrt(t) : 7.787 * t + 16.0 / 116; };
  const double x = f((0.4124 * v[0] + 0.3576 * v[1] + 0.1805 * v[2]) / 0.9505);
  const double y = f(0.2126 * v[0] + 0.7152 * v[1] + 0.0722 * v[2]);
  const double z = f((0.0193 * v[0] + 0.1192 * v[1] + 0.9505 * v[2]) / 1.089);
  return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

TEST(pincel_mapa, every_eye_tells_the_aspects_apart) {
  aplicacion();
  for (const ojo& quien : ojos) {
    for (int i = 0; i < aspectos; ++i) {
      for (int j = 0; j < i; ++j) {
        const terna a = lab_de(static_cast<aspecto>(i), quien), b = lab_de(static_cast<aspecto>(j), quien);
        const double distancia = std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
        EXPECT_GT(distancia, 15) << quien.nombre << ": " << nombre_de(static_cast<aspecto>(i)) << ", "
                                 << nombre_de(static_cast<aspecto>(j));
      }
    }
  }
}

struct mapa_qt_test : banco<guion> {
  QApplication& app = aplicacion();
  Variables_grab variables;
  frm_principal f{plat, ficheros, linea, variables};
  ventana_qt v{f.ventana, [this] { s->al_volver(); }};
  std::unique_ptr<seguimiento> s = std::make_unique<seguimiento>(f, plat, v);
  std::vector<std::int32_t> abiertas;

  void SetUp() override {
    v.al_empezar = [this] { s->al_empezar(); };
    s->mapa().al_abrir = [this](std::int32_t cual) { abiertas.push_back(cual); };
    v.show();
    QApplication::processEvents();
  }
  /// The middle of a cell, found as the user does: by the tool tip.
  QPoint sitio_de(const QString& direcciones) {
    for (int y = 0; y < s->mapa().height(); y += 3) {
      for (int x = 0; x < s->mapa().width(); x += 2) {
        if (ayuda({x, y}).startsWith(direcciones)) return {x, y};
      }
    }
    return {-1, -1};
  }
  QString ayuda(QPoint donde) {
    QToolTip::showText({0, 0}, "");
    QHelpEvent suceso(QEvent::ToolTip, donde, s->mapa().mapToGlobal(donde));
    QApplication::sendEvent(&s->mapa(), &suceso);
    return QToolTip::text();
  }
  void tecla(int cual, Qt::KeyboardModifiers con = Qt::NoModifier) {
    QKeyEvent suceso(QEvent::KeyPress, cual, con);
    QApplication::sendEvent(&s->mapa(), &suceso);
  }
  QColor color_en(QPoint donde) { return s->mapa().grab().toImage().pixelColor(donde); }
};

TEST_F(mapa_qt_test, it_fills_the_free_surface_and_gives_way_to_the_range) {
  const auto sitio = [&](const char* nombre) { return v.findChild<QWidget*>(nombre)->geometry(); };
  EXPECT_EQ(s->mapa().geometry(), QRect(QPoint(0, sitio("Toolbar").bottom() + 1),
                                        QPoint(v.centralWidget()->width() - 1, sitio("StatusBar").top() - 1)));
  for (const bool rango : {true, false}) {
    f.rango.fra_rango.Visible = rango;
    v.sincronizar();
    EXPECT_NE(s->mapa().isVisible(), rango);
  }
}

TEST_F(mapa_qt_test, a_cell_tells_its_state_opens_and_is_reached_by_keys) {
  const QPoint donde = sitio_de("010200–0103FF");
  ASSERT_GE(donde.x(), 0);
  EXPECT_EQ(ayuda(donde),
            "010200–0103FF, bloque 010000–017FFF\nNo se sabe qué contiene el chip\nLa imagen está vacía aquí");
  QMouseEvent doble(QEvent::MouseButtonDblClick, donde, s->mapa().mapToGlobal(donde), Qt::LeftButton, Qt::LeftButton,
                    Qt::NoModifier);
  QApplication::sendEvent(&s->mapa(), &doble);
  for (const int cual : {Qt::Key_Down, Qt::Key_Right, Qt::Key_Right, Qt::Key_Left, Qt::Key_Return}) tecla(cual);
  for (const int cual : {Qt::Key_Up, Qt::Key_Up, Qt::Key_End, Qt::Key_Return, Qt::Key_Home, Qt::Key_Enter}) tecla(cual);
  tecla(Qt::Key_End, Qt::ControlModifier);
  for (const int cual : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Return}) tecla(cual);
  EXPECT_EQ(abiertas, (std::vector<std::int32_t>{0x10200, 0x8200, 0x7E00, 0, 0x3FE00}));
  EXPECT_TRUE(QToolTip::text().startsWith("03FE00–03FFFF")) << "the cursor tells what it stands on";
}

TEST_F(mapa_qt_test, a_long_text_fits_the_bar) {
  auto& barra = *v.findChild<QProgressBar*>("Progress");
  f.barra.ButtonClick = [&](int) {
    const orden_en_curso orden(f);
    const labor_en_curso labor(f.progreso, plat, marcha::labor::grabar, 1'000'000);
    for (int i = 0; i < 2; ++i) {
      plat.pasar(100s);
      f.progreso.ritmo.hechos = i * 13'800;
      s->al_volver();
    }
    EXPECT_EQ(barra.text().toStdString(), "1 % · 138 B/s · 1:59:06");
    EXPECT_LE(barra.fontMetrics().horizontalAdvance(barra.text()), barra.width());
  };
  v.findChild<QToolButton*>("Toolbar_3")->click();
}

TEST_F(mapa_qt_test, while_a_command_runs_cells_and_bar_follow_and_at_rest_nothing_is_looked_at) {
  const QPoint donde = sitio_de("010200–0103FF");
  auto& barra = *v.findChild<QProgressBar*>("Progress");
  const QColor antes = color_en(donde);
  f.barra.ButtonClick = [&](int) {
    const orden_en_curso orden(f);
    const labor_en_curso labor(f.progreso, plat, marcha::labor::grabar, 1000);
    EXPECT_TRUE(s->mirando());
    f.progreso.mapa.borrado();
    f.progreso.ritmo.hechos = 370;
    plat.pasar(2s);
    QElapsedTimer espera;
    for (espera.start(); barra.text().isEmpty() && espera.elapsed() < 5000;) QApplication::processEvents();
  };
  EXPECT_FALSE(s->mirando());
  v.findChild<QToolButton*>("Toolbar_3")->click();
  EXPECT_FALSE(s->mirando());
  EXPECT_EQ(barra.text(), "Duración: 2,0 s");
  EXPECT_EQ(color_en(donde), QColor(Qt::white));
  EXPECT_NE(antes, QColor(Qt::white));
}

}  // namespace
