#include <QAction>
#include <QPainter>
#include <QToolBar>
#include <QToolButton>

#include "desktop/pincel_mapa.h"
#include "imagenes.h"
#include "taller.h"

namespace morvane {
namespace {

constexpr int lado_imagen = 32;

/// A button that shows by a frame for eyes of any kind that it has the focus; most styles hardly hint at it.
class tecla_de_barra final : public QToolButton {
 public:
  tecla_de_barra(QWidget* padre, int trazo) : QToolButton(padre), trazo_(trazo) {}

 protected:
  void paintEvent(QPaintEvent* suceso) override {
    QToolButton::paintEvent(suceso);
    if (!hasFocus()) return;
    QPainter pintor(this);
    enmarcar(pintor, rect().adjusted(2 * trazo_, 2 * trazo_, -2 * trazo_, -2 * trazo_), trazo_, Qt::white);
  }

 private:
  const int trazo_;
};

void hacer_boton(QToolBar& destino, Toolbar& barra, int indice, taller& t) {
  Button& boton = barra.boton(indice);
  const QString nombre = QStringLiteral("%1_%2").arg(qt(barra.Name)).arg(indice);
  auto* accion =
      new QAction(imagen(boton.Image), nombre_accesible({}, boton.ToolTipText, nombre.toStdString()), &destino);
  accion->setObjectName(nombre);
  auto* tecla = new tecla_de_barra(&destino, t.px(15));
  tecla->setDefaultAction(accion);
  tecla->setAutoRaise(true);
  tecla->setIconSize(destino.iconSize());
  tecla->setObjectName(nombre);
  tecla->setAccessibleName(accion->text());
  tecla->setFocusPolicy(Qt::TabFocus);
  destino.addWidget(tecla);
  QObject::connect(accion, &QAction::triggered, &destino, [&barra, indice, tecla, atender = t.atender] {
    const bool con_foco = tecla->hasFocus();
    atender([&barra, indice] {
      if (barra.ButtonClick) barra.ButtonClick(indice);
    });
    // Disabling the button has passed the focus on, and the next press of the space bar would start another command.
    if (con_foco && tecla->isEnabled()) tecla->setFocus();
  });
  t.al_cambiar([accion, tecla, &boton] {
    accion->setEnabled(boton.Enabled);
    // It has not been told that the pointer has left it meanwhile.
    if (!tecla->rect().contains(tecla->mapFromGlobal(QCursor::pos()))) tecla->setAttribute(Qt::WA_UnderMouse, false);
  });
}

}  // namespace

void hacer(QWidget& padre, Toolbar& barra, taller& t) {
  auto* destino = new QToolBar(&padre);
  destino->setObjectName(qt(barra.Name));
  destino->setAccessibleName(QStringLiteral("Herramientas"));
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
