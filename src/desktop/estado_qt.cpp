#include <QFontInfo>
#include <QLabel>
#include <QStatusBar>
#include <QTime>
#include <QTimer>
#include <QVBoxLayout>

#include "taller.h"

namespace morvane {
namespace {

/// A shortened path of 51 characters has to fit the first panel.
constexpr double respecto_a_la_normal = 0.9;

QFont letra_de(const StatusBar& barra, const QFont& normal) {
  QFont letra = letra_de_ancho_fijo(barra.FontName);
  letra.setPixelSize(static_cast<int>(QFontInfo(normal).pixelSize() * respecto_a_la_normal));
  return letra;
}

/// Writes the time of day, and again right after each second has begun.
void dar_la_hora(QLabel* panel, QTimer* pulso) {
  const QTime ahora = QTime::currentTime();
  panel->setText(ahora.toString(QStringLiteral("HH:mm:ss")));
  pulso->start(1000 - ahora.msec());
}

void poner_reloj(QLabel* panel) {
  auto* pulso = new QTimer(panel);
  pulso->setSingleShot(true);
  pulso->setTimerType(Qt::PreciseTimer);
  QObject::connect(pulso, &QTimer::timeout, panel, [panel, pulso] { dar_la_hora(panel, pulso); });
  dar_la_hora(panel, pulso);
}

void ayudar(QLabel& panel, const QString& texto) {
  panel.setToolTip(ayuda_literal(texto));
  panel.setAccessibleDescription(texto);
}

void llenar(QLabel* destino, Panel& panel, taller& t) {
  if (panel.Style == Panel::estilo::hora) {
    destino->setAlignment(Qt::AlignCenter);
    poner_reloj(destino);
    return;
  }
  t.al_cambiar([destino, &panel] {
    destino->setText(qt(panel.Text).replace(QLatin1Char('\n'), QLatin1Char(' ')));
    ayudar(*destino, qt(panel.ToolTipText));
  });
  if (panel.encima == nullptr) return;
  auto* sitio = new QVBoxLayout(destino);
  sitio->setContentsMargins(1, 1, 1, 1);
  sitio->addWidget(hacer_progreso(*destino, *panel.encima, t));
}

}  // namespace

void hacer(QWidget& padre, StatusBar& barra, taller& t) {
  auto* destino = new QStatusBar(&padre);
  destino->setObjectName(qt(barra.Name));
  destino->setAccessibleName(QStringLiteral("Estado"));
  destino->setSizeGripEnabled(false);
  destino->setFont(letra_de(barra, padre.font()));
  const int alto = destino->fontMetrics().height() + t.px(150);
  destino->setGeometry(0, padre.height() - alto, padre.width(), alto);
  int izquierda = 0;
  for (std::size_t i = 0; i < barra.Panels.size(); ++i) {
    Panel& panel = *barra.Panels[i];
    auto* caja = new QLabel(destino);
    caja->setObjectName(QStringLiteral("%1_%2").arg(qt(barra.Name)).arg(i + 1));
    caja->setTextFormat(Qt::PlainText);
    caja->setFrameStyle(int{QFrame::Panel} | int{QFrame::Sunken});
    caja->setGeometry(izquierda + 1, 1, t.px(panel.Width) - 2, alto - 2);
    izquierda += t.px(panel.Width);
    llenar(caja, panel, t);
  }
  t.al_cambiar([destino, &barra] { destino->setVisible(barra.Visible); });
}

}  // namespace morvane
