#include <QAction>
#include <QMenu>
#include <QMenuBar>

#include "menu_letras.h"
#include "taller.h"

namespace morvane {
namespace {

/// A caption as Qt wants it. Only the first "&" marks an access key; what follows it may be a path, in which "&" and
/// tabulators mean nothing. An entry without a caption goes by its name.
QString rotulo(const Menu& menu) {
  QString texto = qt(menu.Caption);
  if (texto.isEmpty()) return qt(menu.Name);
  const qsizetype tecla = texto.indexOf(QLatin1Char('&'));
  if (tecla >= 0) {
    const QString resto = texto.mid(tecla + 1).replace(QLatin1Char('&'), QLatin1String("&&"));
    texto = texto.left(tecla + 1) + resto;
  }
  return texto.replace(QLatin1Char('\t'), QLatin1Char(' '));
}

QAction* hacer_entrada(QMenu& destino, Menu& menu, taller& t) {
  if (!menu.lista.empty()) {
    auto* sub = new menu_letras(&destino);
    destino.addMenu(sub);
    sub->setObjectName(qt(menu.Name));
    hacer_lista(*sub, menu.lista, t);
    return sub->menuAction();
  }
  auto* accion = destino.addAction(QString());
  accion->setSeparator(menu.Caption.valor() == "-");
  QObject::connect(accion, &QAction::triggered, &destino, [&menu, atender = t.atender] { atender(menu.Click); });
  return accion;
}

void mantener(QAction& accion, Menu& menu, taller& t) {
  accion.setObjectName(qt(menu.Name));
  t.al_cambiar([&accion, &menu] {
    if (!accion.isSeparator()) accion.setText(rotulo(menu));
    if (accion.menu() != nullptr) accion.menu()->setWindowTitle(nombre_accesible(menu.Caption, {}, menu.Name));
    accion.setVisible(menu.Visible);
    accion.setEnabled(menu.Enabled);
  });
}

}  // namespace

void hacer_lista(QMenu& destino, const std::vector<Menu*>& lista, taller& t) {
  for (Menu* menu : lista) mantener(*hacer_entrada(destino, *menu, t), *menu, t);
}

void hacer_menus(QMenuBar& barra, const std::vector<Menu*>& menus, taller& t) {
  for (Menu* menu : menus) {
    auto* lista = new menu_letras(&barra);
    barra.addMenu(lista);
    lista->setObjectName(qt(menu->Name));
    hacer_lista(*lista, menu->lista, t);
    mantener(*lista->menuAction(), *menu, t);
  }
}

}  // namespace morvane
