#include "rango_qt.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "pintura.h"
#include "shell/ordenes.h"
#include "taller.h"

namespace morvane {
namespace {

void decir(QLabel& donde, const lectura_prevista& que) {
  QPalette tinta = donde.parentWidget()->palette();
  if (que.dudosa) tinta.setColor(QPalette::WindowText, color_de_aviso(tinta));
  donde.setPalette(tinta);
  donde.setText((que.dudosa ? QStringLiteral("⚠ ") : QString()) + qt(que.texto));
  donde.setFont(cabida(donde.parentWidget()->font(), donde.text(), donde.width()));
}

}  // namespace

void completar(ventana_qt& ventana, panel_rango& rango) {
  auto* marco = ventana.findChild<QWidget*>(qt(rango.fra_rango.Name));
  auto* desde = marco->findChild<QLineEdit*>(qt(rango.txt_desde.Name));
  auto* hasta = marco->findChild<QLineEdit*>(qt(rango.txt_hasta.Name));
  auto* leer = marco->findChild<QPushButton*>(qt(rango.btn_leer.Name));
  const QRect rotulo = marco->findChild<QWidget*>(qt(rango.Label1.Name))->geometry();
  const QRect salir = marco->findChild<QWidget*>(qt(rango.btn_salir.Name))->geometry();
  auto* dicho = new QLabel(marco);
  dicho->setObjectName(QStringLiteral("lectura_prevista"));
  dicho->setTextFormat(Qt::PlainText);
  dicho->setGeometry(rotulo.left(), salir.top(), salir.left() - rotulo.left() - rotulo.height() / 2, salir.height());
  const auto actualizar = [=] {
    decir(*dicho, prever_lectura(desde->text().toStdString(), hasta->text().toStdString()));
  };
  for (QLineEdit* campo : {desde, hasta}) {
    QObject::connect(campo, &QLineEdit::textChanged, dicho, actualizar);
    QObject::connect(campo, &QLineEdit::returnPressed, leer, &QPushButton::click);
  }
  actualizar();
}

}  // namespace morvane
