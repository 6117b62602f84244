// The chapter on what the dumps can do.

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include "viaje.h"

namespace morvane {
namespace {

QAction& entrada(QWidget& ventana, const QString& rotulo) {
  for (auto* una : ventana.findChildren<QAction*>()) {
    if (QString(una->text()).remove(QLatin1Char('&')) == rotulo) return *una;
  }
  throw std::runtime_error("no existe la entrada " + rotulo.toStdString());
}

}  // namespace

void buscar_en_un_volcado(viaje& v) {
  v.t.decir("En el buffer de salida, Ctrl+F: se busca el texto «morvane», en minúsculas, dos veces.");
  v.hijo<QAction>("men_ver_B_S").trigger();
  QWidget& volcado = v.t.ventana("Buffer de Salida");
  volcado.activateWindow();
  entrada(volcado, QStringLiteral("Buscar...")).trigger();
  volcado.findChild<QRadioButton*>(QStringLiteral("texto"))->click();
  auto& que = *volcado.findChild<QLineEdit*>(QStringLiteral("que"));
  testigo::teclear(que, QStringLiteral("morvane"));
  for (int i = 0; i < 2; ++i) emit que.returnPressed();
  const QString dicho = volcado.findChild<QLabel*>(QStringLiteral("mensaje"))->text();
  v.t.decir("La barra contesta «" + dicho.toStdString() + "».");
  if (dicho != QLatin1String("En 001000")) v.t.faltar("el texto de la muestra está en 001000");
  v.t.foto_de("Buffer de Salida", "buscar");
}

}  // namespace morvane
