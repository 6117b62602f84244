#include <QAction>
#include <QToolBar>
#include <QToolButton>

#include "imagenes.h"
#include "taller.h"

namespace morvane {
namespace {

constexpr int lado_imagen = 32;

void hacer_boton(QToolBar& destino, Toolbar& barra, int indice, taller& t) {
  Button& boton = barra.boton(indice);
  const QString nombre = QStringLiteral("%1_%2").arg(qt(barra.Name)).arg(indice);
  QAction* accion =
      destino.addAction(imagen(boton.Image), nombre_accesible({}, boton.ToolTipText, nombre.toStdString()));
  accion->setObjectName(nombre);
  auto* tecla = qobject_cast<QToolButton*>(destino.widgetForAction(accion));
  tecla->setObjectName(nombre);
  tecla->setAccessibleName(accion->text());
  tecla->setFocusPolicy(Qt::TabFocus);
  QObject::connect(accion, &QAction::triggered, &destino, [&barra, indice, tecla, atender = t.atender] {
    const bool con_foco = tecla->hasFocus();
    atender([&barra, indice] {
      if (barra.ButtonClick) barra.ButtonClick(indice);
    });
    // Disabling the button has passed the focus on, and the next press of the space bar would start another command.
    if (con_foco && tecla->isEnabled()) tecla->setFocus();
  });
  t.al_cambiar([accion, &boton] { accion->setEnabled(boton.Enabled); });
}

}  // namespace

void hacer(QWidget& padre, Toolbar& barra, taller& t) {
  auto* destino = new QToolBar(&padre);
  destino->setObjectName(qt(barra.Name));
  destino->setMovable(false);
  destino->setContextMenuPolicy(Qt::NoContextMenu);
  const int lado = t.imagen(lado_imagen);
  destino->setIconSize({lado, lado});
  for (int i = 1; i <= static_cast<int>(barra.Buttons.size()); ++i) hacer_boton(*destino, barra, i, t);
  destino->setGeometry(0, 0, padre.width(), destino->sizeHint().height());
  t.al_cambiar([destino, &barra] {
    destino->setVisible(barra.Visible);
    destino->setEnabled(barra.Enabled);
  });
}

}  // namespace morvane
