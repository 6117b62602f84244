#include "desktop/ventana_qt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLayout>
#include <QMenuBar>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <exception>

#include "menu_letras.h"
#include "taller.h"

namespace morvane {
namespace {

/// Height of the font, in pixels, with which a pixel is 15 twips.
constexpr double letra_de_referencia = 15;
/// What a window that follows its user keeps at least, in twips.
constexpr int ancho_minimo = 3000, alto_minimo = 1800;
/// The title and frame that the windows are laid out for, in twips. With the height of a taller title the lower edge of
/// what follows the size would come to stand out of sight.
constexpr int titulo_previsto = 480;

double escala_de(const QWidget& ventana) {
  return std::max(1.0, ventana.fontMetrics().height() / letra_de_referencia);
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

ventana_qt::ventana_qt(Form& forma, std::function<void()> despues)
    : forma_(forma), escala_(escala_de(*this)), despues_(std::move(despues)) {
  taller t{escala_, [this](const evento& manejador) { atender(manejador); }, actualizaciones_, forma.Caption};
  setObjectName(qt(forma.Name));
  if (forma.fija) quitar_botones(*this);
  poner_menus(t);
  poner_superficie(t);
  t.al_cambiar([this] { setWindowTitle(qt(forma_.Caption)); });
  vistos_ = forma.cambios.valor();
  move(centro(*this));
}

void ventana_qt::poner_menus(taller& t) {
  if (!forma_.menus.empty()) {
    menuBar()->setNativeMenuBar(false);
    menuBar()->setContextMenuPolicy(Qt::PreventContextMenu);
    menuBar()->setAccessibleName(QStringLiteral("Menú"));
    hacer_menus(*menuBar(), forma_.menus, t);
  }
  contextual_ = new menu_letras(this);
  contextual_->setWindowTitle(QStringLiteral("Menú contextual"));
  hacer_lista(*contextual_, forma_.contextual, t);
}

void ventana_qt::poner_superficie(taller& t) {
  auto* superficie = new QWidget;
  superficie->setFixedSize(t.px(forma_.ScaleWidth), t.px(forma_.ScaleHeight));
  colorear(*superficie, forma_.BackColor);
  hacer_controles(*superficie, forma_.Controls, t);
  setCentralWidget(superficie);
  // Where there are buttons at the top, the focus waits in front of the first one: Tab leads there, Space to nothing.
  if (!forma_.menus.empty()) superficie->setFocus();
  if (forma_.fija) {
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    adjustSize();
    return;
  }
  resize(layout()->totalSizeHint().boundedTo(screen()->availableSize()));
  superficie->setMinimumSize(superficie->size().boundedTo({t.px(ancho_minimo), t.px(alto_minimo)}));
  superficie->setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
}

void ventana_qt::sincronizar() {
  if (vistos_ == forma_.cambios.valor()) return;
  vistos_ = forma_.cambios.valor();
  for (const auto& toma : actualizaciones_) toma();
}

void ventana_qt::al_cambiar(std::function<void()> toma) {
  toma();
  actualizaciones_.push_back(std::move(toma));
}

// Behind a box an assistive tool can still press what mouse and keyboard cannot; a command would then wait for ever,
// since nothing comes from the line while a box is open.
void ventana_qt::atender(const evento& manejador) {
  if (!manejador || QApplication::activeModalWidget() != nullptr) return;
  ++manejando_;
  if (al_empezar) al_empezar();
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

/// The key that desktops have for it is missing on many keyboards.
void ventana_qt::pedir_contextual() {
  QWidget* quien = focusWidget() != nullptr ? focusWidget() : this;
  const QPoint donde = quien->rect().center();
  QContextMenuEvent suceso(QContextMenuEvent::Keyboard, donde, quien->mapToGlobal(donde));
  QCoreApplication::sendEvent(quien, &suceso);
}

void ventana_qt::keyPressEvent(QKeyEvent* tecla) {
  if (tecla->key() == Qt::Key_F10 && tecla->modifiers() == Qt::ShiftModifier) return pedir_contextual();
  if (tecla->key() == Qt::Key_Escape && tecla->modifiers() == Qt::NoModifier && forma_.menus.empty()) {
    close();
    return;
  }
  auto* boton = qobject_cast<QAbstractButton*>(focusWidget());
  const bool enter = tecla->key() == Qt::Key_Return || tecla->key() == Qt::Key_Enter;
  if (boton == nullptr || !enter) return QMainWindow::keyPressEvent(tecla);
  boton->click();
}

void ventana_qt::closeEvent(QCloseEvent* suceso) {
  const bool puede = !puede_cerrarse || puede_cerrarse();
  suceso->setAccepted(puede);
}

// Asked for by the keyboard it comes up at what has the focus, which may have been scrolled out of sight.
void ventana_qt::contextMenuEvent(QContextMenuEvent* suceso) {
  suceso->accept();
  if (contextual_->isEmpty()) return;
  const QPoint donde = mapFromGlobal(suceso->globalPos());
  contextual_->popup(mapToGlobal(rect().contains(donde) ? donde : rect().center()));
}

// What the desktop puts around a window is known only after the window has appeared; then the window moves.
bool ventana_qt::event(QEvent* suceso) {
  const bool hecho = QMainWindow::event(suceso);
  const QEvent::Type tipo = suceso->type();
  if (tipo == QEvent::Show && !suceso->spontaneous()) tamano_ = QSize();
  if (tipo == QEvent::Show || tipo == QEvent::Resize || tipo == QEvent::Move || tipo == QEvent::WindowActivate) {
    avisar_tamano();
  }
  return hecho;
}

void ventana_qt::avisar_tamano() {
  if (forma_.fija || !forma_.Resize || !isVisible() || isMinimized()) return;
  const taller t{escala_, {}, actualizaciones_, {}};
  const QMargins marco = windowHandle()->frameMargins();
  const int titulo = std::min(marco.top() + marco.bottom(), t.px(titulo_previsto));
  const QSize nuevo = size() + QSize(marco.left() + marco.right(), titulo);
  if (nuevo == tamano_) return;
  tamano_ = nuevo;
  ejecutar([&] { forma_.Resize(t.twips(nuevo.width()), t.twips(nuevo.height())); });
  sincronizar();
}

}  // namespace morvane
