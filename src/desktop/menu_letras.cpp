#include "menu_letras.h"

#include <QKeyEvent>
#include <QKeySequence>
#include <algorithm>

namespace morvane {
namespace {

QChar inicial(const QAction& accion) {
  const QString texto = accion.text();
  return texto.isEmpty() ? QChar() : texto.front().toLower();
}

bool elegible(const QAction& accion) {
  return accion.isVisible() && accion.isEnabled() && !accion.isSeparator();
}

}  // namespace

menu_letras::menu_letras(QWidget* padre) : QMenu(padre) {
  soltar_.setSingleShot(true);
  connect(&soltar_, &QTimer::timeout, this, [this] { setActiveAction(nullptr); });
}

bool menu_letras::ir_a(QChar letra) {
  const QList<QAction*> todas = actions();
  const auto con_tecla = [&](const QAction* una) {
    return elegible(*una) &&
           QKeySequence::mnemonic(una->text()) == QKeySequence(int{Qt::ALT} | letra.toUpper().unicode());
  };
  if (std::ranges::any_of(todas, con_tecla)) return false;
  const qsizetype actual = todas.indexOf(activeAction());
  for (qsizetype i = 1; i <= todas.size(); ++i) {
    QAction* una = todas.at((actual + i + todas.size()) % todas.size());
    if (!elegible(*una) || inicial(*una) != letra.toLower()) continue;
    setActiveAction(una);
    return true;
  }
  return false;
}

void menu_letras::keyPressEvent(QKeyEvent* tecla) {
  const QString texto = tecla->text();
  const bool letra = texto.size() == 1 && texto.front().isLetterOrNumber();
  if (letra && (tecla->modifiers() & ~(Qt::ShiftModifier | Qt::AltModifier)) == 0 && ir_a(texto.front())) return;
  QMenu::keyPressEvent(tecla);
}

// A menu that a key opens gets its first entry chosen behind this.
void menu_letras::showEvent(QShowEvent* suceso) {
  QMenu::showEvent(suceso);
  soltar_.start(0);
}

}  // namespace morvane
