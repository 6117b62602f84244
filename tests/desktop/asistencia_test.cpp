#include <QAccessible>
#include <QtWidgets>
#include <set>

#include "aplicacion.h"
#include "apoyo/banco.h"
#include "apoyo/guion.h"
#include "desktop/plataforma_qt.h"
#include "desktop/seguimiento.h"

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
  EXPECT_NE(nodo->role(), QAccessible::NoRole) << qPrintable(aqui);
  const bool nombrado = !nodo->text(QAccessible::Name).trimmed().isEmpty();
  EXPECT_TRUE(nombrado || sin_nombre.contains(nodo->role())) << qPrintable(aqui);
  EXPECT_TRUE(nombrado || !nodo->state().focusable || !nodo->isValid()) << qPrintable(aqui);
  int vistos = 1;
  // Of a long list the first entries will do.
  for (int i = 0; i < std::min(nodo->childCount(), 40); ++i) {
    if (QAccessibleInterface* hijo = nodo->child(i)) vistos += recorrer(hijo, aqui, en_menu);
  }
  return vistos;
}

int recorrer(QWidget& ventana) {
  return recorrer(QAccessible::queryAccessibleInterface(&ventana), {});
}

struct asistencia : banco<guion> {
  QApplication& app = aplicacion();
  Variables_grab variables;
  frm_principal f{plat, ficheros, linea, variables};
  ventana_qt v{f.ventana, [] {}};
  seguimiento s{f, plat, v};

  void SetUp() override {
    QAccessible::setActive(true);
    v.show();
    v.activateWindow();
    QApplication::processEvents();
  }
  void tecla(int cual) {
    QWidget* donde = v.focusWidget();
    QKeyEvent suceso(QEvent::KeyPress, cual, Qt::NoModifier);
    QApplication::sendEvent(donde, &suceso);
  }
};

TEST_F(asistencia, every_window_names_all_that_it_shows) {
  EXPECT_GT(recorrer(v), 50);
  auto* mapa = QAccessible::queryAccessibleInterface(&s.mapa());
  EXPECT_EQ(mapa->role(), QAccessible::Chart);
  EXPECT_EQ(mapa->valueInterface()->maximumValue().toInt(), 511);
  mapa->valueInterface()->setCurrentValue(3);
  EXPECT_TRUE(mapa->text(QAccessible::Value).startsWith("000600–0007FF"));
  EXPECT_TRUE(mapa->text(QAccessible::Help).startsWith("512 celdas"));
  f.rango.fra_rango.Visible = true;
  v.sincronizar();
  EXPECT_GT(recorrer(v), 50);
  variables.dir_max = 0x3FF;
  for (Form* forma : f.otras_ventanas()) {
    forma->Show();
    ventana_qt otra(*forma, {});
    otra.show();
    EXPECT_GE(recorrer(otra), 4) << forma->Name;
  }
}

TEST_F(asistencia, boxes_and_the_open_dialog_name_all_that_they_show) {
  plataforma_qt de_veras;
  const auto mirar = [] {
    EXPECT_GT(recorrer(*QApplication::activeModalWidget()), 3);
    QApplication::activeModalWidget()->close();
  };
  for (const auto cual : {icono::ninguno, icono::critico, icono::informacion, icono::exclamacion}) {
    QTimer::singleShot(0, &app, mirar);
    de_veras.MsgBox({"t", "x", botones::SiNoCancelar, cual});
  }
  QTimer::singleShot(0, &app, mirar);
  de_veras.ShowOpen(f.cmd_buscar);
}

TEST_F(asistencia, tab_goes_from_the_first_button_through_the_panel_to_the_map) {
  QStringList orden;
  for (int i = 0; i < 8; ++i) {
    tecla(Qt::Key_Tab);
    orden << v.focusWidget()->objectName();
  }
  const QStringList botones{"Toolbar_1", "Toolbar_2", "Toolbar_3", "Toolbar_4", "Toolbar_5", "Toolbar_6"};
  EXPECT_EQ(orden, botones + QStringList({"mapa_flash", "Toolbar_1"}));
  f.rango.fra_rango.Visible = true;
  v.sincronizar();
  EXPECT_EQ(v.focusWidget()->objectName(), "txt_desde") << "a panel that appears is there to be filled in";
  orden.clear();
  for (int i = 0; i < 4; ++i) {
    tecla(Qt::Key_Tab);
    orden << v.focusWidget()->objectName();
  }
  EXPECT_EQ(orden, QStringList({"txt_hasta", "btn_leer", "btn_salir", "Toolbar_1"}));
}

TEST_F(asistencia, a_button_shows_that_it_has_the_focus) {
  auto* boton = v.findChild<QToolButton*>("Toolbar_2");
  const QImage sin_foco = boton->grab().toImage();
  boton->setFocus(Qt::TabFocusReason);
  const QImage con_foco = boton->grab().toImage();
  int cambiados = 0;
  for (int x = 0; x < sin_foco.width(); ++x) {
    for (int y = 0; y < sin_foco.height(); ++y) {
      cambiados += std::abs(qGray(sin_foco.pixel(x, y)) - qGray(con_foco.pixel(x, y))) > 100;
    }
  }
  EXPECT_GT(cambiados, 2 * sin_foco.width());
}

}  // namespace
