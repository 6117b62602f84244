#include "desktop/ventana_qt.h"

#include <QCloseEvent>
#include <QLayout>
#include <QMenuBar>
#include <QPalette>
#include <QScreen>
#include <algorithm>
#include <cmath>
#include <exception>

#include "taller.h"

namespace morvane {
namespace {

constexpr double twips_por_pixel = 15;
/// Height of the font, in pixels, with which a pixel is 15 twips.
constexpr double letra_de_referencia = 15;

double escala_de(const QWidget& ventana) {
  return std::max(1.0, ventana.fontMetrics().height() / letra_de_referencia);
}

/// Gives the surface its colour and what stands on it a colour that can be read there, whatever the desktop's theme.
void colorear(QWidget& superficie, color fondo) {
  const QColor base = QColor::fromRgb(fondo);
  QPalette paleta = superficie.palette();
  paleta.setColor(QPalette::Window, base);
  paleta.setColor(QPalette::WindowText, base.lightness() > 127 ? Qt::black : Qt::white);
  superficie.setPalette(paleta);
  superficie.setAutoFillBackground(true);
}

/// In the middle of the screen; where a window is larger than that, its title and menu stay within reach.
QPoint centro(const QWidget& ventana) {
  const QRect pantalla = ventana.screen()->availableGeometry();
  const QPoint esquina = pantalla.center() - ventana.rect().center();
  return {std::max(esquina.x(), pantalla.left()), std::max(esquina.y(), pantalla.top())};
}

void quitar_botones(QWidget& ventana) {
  ventana.setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                         Qt::WindowCloseButtonHint | Qt::MSWindowsFixedSizeDialogHint);
}

}  // namespace

int taller::px(int twips) const {
  return static_cast<int>(std::lround(twips / twips_por_pixel * escala));
}

int taller::imagen(int lado) const {
  return lado * static_cast<int>(escala);
}

QRect taller::px(const lugar& sitio) const {
  return {px(sitio.Left), px(sitio.Top), px(sitio.Width), px(sitio.Height)};
}

QString nombre_accesible(const std::string& rotulo, const std::string& ayuda, const std::string& nombre) {
  QString texto = qt(rotulo).remove(QLatin1Char('&')).trimmed();
  if (texto.isEmpty()) texto = qt(ayuda);
  return texto.isEmpty() ? qt(nombre) : texto;
}

ventana_qt::ventana_qt(Form& forma, std::function<void()> despues) : forma_(forma), despues_(std::move(despues)) {
  taller t{escala_de(*this), [this](const evento& manejador) { atender(manejador); }, actualizaciones_};
  setObjectName(qt(forma.Name));
  if (forma.fija) quitar_botones(*this);
  menuBar()->setNativeMenuBar(false);
  hacer_menus(*menuBar(), forma.menus, t);
  auto* superficie = new QWidget;
  superficie->setFixedSize(t.px(forma.ScaleWidth), t.px(forma.ScaleHeight));
  colorear(*superficie, forma.BackColor);
  hacer_controles(*superficie, forma.Controls, t);
  setCentralWidget(superficie);
  t.al_cambiar([this] { setWindowTitle(qt(forma_.Caption)); });
  vistos_ = forma.cambios.valor();
  layout()->setSizeConstraint(QLayout::SetFixedSize);
  adjustSize();
  move(centro(*this));
}

void ventana_qt::sincronizar() {
  if (vistos_ == forma_.cambios.valor()) return;
  vistos_ = forma_.cambios.valor();
  for (const auto& toma : actualizaciones_) toma();
}

void ventana_qt::atender(const evento& manejador) {
  if (!manejador) return;
  ++manejando_;
  ejecutar(manejador);
  --manejando_;
  if (despues_) despues_();
}

void ventana_qt::ejecutar(const evento& manejador) {
  // Nothing may be thrown through Qt's event loop.
  try {
    manejador();
  } catch (const std::exception& fallo) {
    if (al_fallar) al_fallar(fallo.what());
  }
}

void ventana_qt::closeEvent(QCloseEvent* suceso) {
  const bool puede = !puede_cerrarse || puede_cerrarse();
  suceso->setAccepted(puede);
}

}  // namespace morvane
