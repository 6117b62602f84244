#include <set>

#include "aplicacion.h"
#include "desktop/plataforma_qt.h"

namespace {

using namespace apoyo;

/// What stands there only to hold other things, or to show a text that may be empty.
const std::set<QAccessible::Role> sin_nombre{QAccessible::Client, QAccessible::Separator,   QAccessible::StaticText,
                                             QAccessible::Pane,   QAccessible::ScrollBar,   QAccessible::Splitter,
                                             QAccessible::Grip,   QAccessible::LayeredPane, QAccessible::Border};

/// Walks the tree below `nodo` as a screen reader does, and counts what it has met.
int recorrer(QAccessibleInterface* nodo, const QString& camino, bool en_menu = false) {
  const QString aqui = camino + "/" + QString::number(nodo->role()) + nodo->text(QAccessible::Name);
  en_menu = en_menu || nodo->role() == QAccessible::MenuBar || nodo->role() == QAccessible::PopupMenu;
  if (nodo->state().invisible && !en_menu) return 0;
  const bool nombrado = !nodo->text(QAccessible::Name).trimmed().isEmpty();
  const bool sobra = sin_nombre.contains(nodo->role()) && !nodo->state().focusable;
  EXPECT_TRUE(nodo->role() != QAccessible::NoRole && (nombrado || sobra || !nodo->isValid())) << qPrintable(aqui);
  int vistos = 1;
  // Of a long list the first entries will do.
  for (int i = 0; i < std::min(nodo->childCount(), 40); ++i) {
    if (QAccessibleInterface* hijo = nodo->child(i)) vistos += recorrer(hijo, aqui, en_menu);
  }
  return vistos;
}
int recorrer(QWidget* ventana) {
  return recorrer(QAccessible::queryAccessibleInterface(ventana), {});
}

struct asistencia : banco_ventana {
  asistencia() { QAccessible::setActive(true); }
};

TEST_F(asistencia, every_window_and_box_names_all_that_it_shows) {
  EXPECT_GT(recorrer(&v), 50);
  auto* mapa = QAccessible::queryAccessibleInterface(&s.mapa());
  mapa->valueInterface()->setCurrentValue(3);
  EXPECT_TRUE(mapa->text(QAccessible::Value).startsWith("000600–0007FF"));
  EXPECT_TRUE(mapa->text(QAccessible::Help).startsWith("512 celdas"));
  f.rango.fra_rango.Visible = true;
  v.sincronizar();
  EXPECT_EQ(v.focusWidget()->objectName(), "txt_desde") << "a panel that appears is there to be filled in";
  EXPECT_GT(recorrer(&v), 50);
  variables.dir_max = 0x3FF;
  for (Form* forma : f.otras_ventanas()) {
    forma->Show();
    ventana_qt otra(*forma, {});
    otra.show();
    EXPECT_GE(recorrer(&otra), 4) << forma->Name;
  }
  plataforma_qt de_veras;
  const auto mirar = [] {
    EXPECT_GT(recorrer(QApplication::activeModalWidget()), 3);
    QApplication::activeModalWidget()->close();
  };
  for (const auto cual : {icono::ninguno, icono::critico, icono::informacion, icono::exclamacion}) {
    QTimer::singleShot(0, &app, mirar);
    de_veras.MsgBox({"t", "x", botones::SiNoCancelar, cual});
  }
  QTimer::singleShot(0, &app, mirar);
  de_veras.ShowOpen(f.cmd_buscar);
}

}  // namespace
