#include "desktop/letrero_qt.h"

#include <QStyleOptionToolButton>
#include <QStylePainter>

#include "conversiones.h"
#include "desktop/pincel_mapa.h"
#include "pintura.h"
#include "shell/frm_principal.h"
#include "taller.h"

namespace morvane {
namespace {

constexpr int pausa_ms = 30;

}  // namespace

letrero_qt::letrero_qt(QWidget* padre, const frm_principal& f, std::function<std::string()> rotular,
                       std::function<bool()> libre)
    : QToolButton(padre), f_(f), rotular_(std::move(rotular)), libre_(std::move(libre)) {
  luego_.setSingleShot(true);
  connect(&luego_, &QTimer::timeout, this, [this] { averiguar(); });
  setObjectName(QStringLiteral("letrero_puerto"));
  setAutoRaise(true);
  setFocusPolicy(Qt::TabFocus);
}

void letrero_qt::preguntar() {
  mirar();
  luego_.start(pausa_ms);
}

void letrero_qt::averiguar() {
  if (!libre_()) return;
  rotulo_ = rotular_();
  mirar();
}

void letrero_qt::mirar() {
  if (de_ != f_.link.valores.puerto) {
    rotulo_ = de_ = f_.link.valores.puerto;
    luego_.start(pausa_ms);
  }
  letrero nuevo = letrero_de(f_, rotulo_);
  if (nuevo == dicho_) return;
  dicho_ = std::move(nuevo);
  const QString todo = qt(dicho_.puerto) + QLatin1Char('\n') + qt(dicho_.placa);
  setAccessibleName(QString(todo).replace(QLatin1Char('\n'), QLatin1String(". ")));
  setAccessibleDescription(QStringLiteral("Abre las opciones del puerto serial"));
  setToolTip(ayuda_literal(todo + QLatin1Char('\n') + accessibleDescription()));
  update();
}

void letrero_qt::paintEvent(QPaintEvent* /*suceso*/) {
  QStylePainter pintor(this);
  QStyleOptionToolButton opcion;
  initStyleOption(&opcion);
  pintor.drawComplexControl(QStyle::CC_ToolButton, opcion);
  const int renglon = fontMetrics().height(), margen = renglon / 2;
  const QRect dentro = rect().adjusted(margen, 0, -margen, 0);
  const QRect arriba(dentro.left(), dentro.center().y() - renglon, dentro.width(), renglon);
  const auto escribir = [&](const QRect& sitio, const QString& texto) {
    pintor.drawText(sitio, Qt::AlignRight | Qt::AlignVCenter,
                    pintor.fontMetrics().elidedText(texto, Qt::ElideMiddle, sitio.width()));
  };
  pintor.setPen(palette().color(QPalette::WindowText));
  escribir(arriba, qt(dicho_.puerto));
  if (dicho_.aviso) pintor.setPen(color_de_aviso(palette()));
  pintor.setFont(letra_menor(font()));
  escribir(arriba.translated(0, renglon), (dicho_.aviso ? QStringLiteral("⚠ ") : QString()) + qt(dicho_.placa));
  const int trazo = std::max(1, renglon / 15);
  if (hasFocus()) enmarcar(pintor, rect().adjusted(2 * trazo, 2 * trazo, -2 * trazo, -2 * trazo), trazo, Qt::white);
}

}  // namespace morvane
