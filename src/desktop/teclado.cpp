#include "desktop/teclado.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <utility>

namespace morvane {

namespace {

constexpr instante ciega = std::chrono::milliseconds(500);
/// A repeat without a mark is a release and a press of the same moment, in milliseconds. (What is held cannot be kept
/// account of: the release of a key that closes a window may come to no window at all.)
constexpr quint64 mismo_momento = 2;

/// The key on the keyboard; where the desktop does not tell, what is written on it.
quint32 cual(const QKeyEvent& tecla) {
  return tecla.nativeScanCode() != 0 ? tecla.nativeScanCode() : static_cast<quint32>(tecla.key());
}

bool en_un_texto() {
  const QWidget* foco = QApplication::focusWidget();
  return foco != nullptr && foco->testAttribute(Qt::WA_InputMethodEnabled);
}

/// True for a press that can start or answer something.
bool manda(const QKeyEvent& tecla) {
  switch (tecla.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
      return true;
    default:
      break;
  }
  if ((tecla.modifiers() & Qt::AltModifier) != 0 || (tecla.key() >= Qt::Key_F1 && tecla.key() <= Qt::Key_F35)) {
    return true;
  }
  const bool otra = tecla.key() == Qt::Key_Space || (tecla.modifiers() & Qt::ControlModifier) != 0;
  return otra && !en_un_texto();
}

/// True for the keys that only lead about.
bool lleva(const QKeyEvent& tecla) {
  return tecla.key() == Qt::Key_Tab || tecla.key() == Qt::Key_Backtab ||
         (tecla.key() >= Qt::Key_Home && tecla.key() <= Qt::Key_PageDown);
}

bool letra_sola(const QKeyEvent& tecla) {
  constexpr auto otras = Qt::AltModifier | Qt::ControlModifier | Qt::MetaModifier;
  return (tecla.modifiers() & otras) == 0 && !tecla.text().isEmpty() && tecla.text().front().isLetterOrNumber();
}

}  // namespace

teclado::teclado(std::function<instante()> ahora) : ahora_(std::move(ahora)) {
  qApp->installEventFilter(this);
}

void teclado::llega_caja() {
  caja_ = {true, en_un_texto(), ahora_() + ciega};
}

// Keys come to a window first, and only then to what is in it; before the press comes the question whether it may be a
// shortcut, which accepting denies.
bool teclado::eventFilter(QObject* quien, QEvent* suceso) {
  const QEvent::Type tipo = suceso->type();
  if (!quien->isWindowType()) return false;
  if (tipo == QEvent::KeyRelease) soltada(*static_cast<QKeyEvent*>(suceso));
  if (tipo != QEvent::KeyPress && tipo != QEvent::ShortcutOverride) return false;
  const auto& tecla = *static_cast<QKeyEvent*>(suceso);
  const bool otra_vez = repetida(tecla);
  const bool basta = caja_.abierta ? detiene_la_caja(tecla) || (otra_vez && !lleva(tecla)) : otra_vez && manda(tecla);
  if (basta) suceso->accept();
  return basta;
}

bool teclado::repetida(const QKeyEvent& tecla) const {
  return tecla.isAutoRepeat() || (cual(tecla) == suelta_ && tecla.timestamp() - suelta_desde_ <= mismo_momento);
}

bool teclado::detiene_la_caja(const QKeyEvent& tecla) {
  if (ahora_() >= caja_.hasta) return caja_.entre_letras && letra_sola(tecla);
  if (caja_.entre_letras) caja_.hasta = ahora_() + ciega;
  return true;
}

void teclado::soltada(const QKeyEvent& tecla) {
  if (tecla.isAutoRepeat()) return;
  suelta_ = cual(tecla);
  suelta_desde_ = tecla.timestamp();
}

}  // namespace morvane
