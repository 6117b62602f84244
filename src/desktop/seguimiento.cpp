#include "desktop/seguimiento.h"

#include <QLayout>
#include <QProgressBar>

#include "pintura.h"
#include "taller.h"

namespace morvane {
namespace {

using namespace std::chrono_literals;

constexpr auto entre_miradas = 100ms;

}  // namespace

seguimiento::seguimiento(frm_principal& f, const plataforma& plat, ventana_qt& ventana,
                         std::function<std::string()> rotular)
    : f_(f),
      plat_(plat),
      ventana_(ventana),
      barra_(ventana.findChild<QProgressBar*>(qt(f.avance.Progress.Name))),
      letra_(barra_->font()),
      paleta_(barra_->palette()),
      mapa_(new mapa_qt(ventana.centralWidget(), f.avance.mapa)),
      letrero_(new letrero_qt(ventana.findChild<QWidget*>(qt(f.barra.Name)), f, std::move(rotular),
                              [this] { return !ventana_.ocupada(); })),
      detener_(ventana.findChild<QToolButton*>(qt(f.barra.Name) + QStringLiteral("_6"))) {
  mapa_->setGeometry(superficie_libre());
  letrero_->setGeometry(barra_libre());
  QObject::connect(letrero_, &QToolButton::clicked, letrero_,
                   [this] { ventana_.atender([this] { f_.cfg_pto_serial.ventana.Show(); }); });
  barra_->setAccessibleName(QStringLiteral("Progreso"));
  QObject::connect(detener_, &QToolButton::pressed, detener_, [this] { pulsado_ = true; });
  // The handler of a tool button runs before it counts as released.
  QObject::connect(detener_, &QToolButton::released, detener_, [this] {
    pulsado_ = false;
    mirar_detener();
  });
  ventana.al_cambiar([this] { mapa_->setVisible(!f_.rango.fra_rango.Visible); });
  QObject::connect(&pulso_, &QTimer::timeout, &pulso_, [this] { mirar(); });
}

QRect seguimiento::superficie_libre() const {
  const QWidget& superficie = *ventana_.centralWidget();
  const auto sitio = [&](const control& c) { return superficie.findChild<QWidget*>(qt(c.Name))->geometry(); };
  const int arriba = sitio(f_.barra).bottom() + 1, abajo = sitio(f_.estado).top();
  return {0, arriba, superficie.width(), abajo - arriba};
}

/// Behind the last button of the toolbar.
QRect seguimiento::barra_libre() const {
  const QWidget& barra = *letrero_->parentWidget();
  constexpr int margen = 2;
  const int izquierda = barra.layout()->sizeHint().width() + margen;
  return {izquierda, margen, barra.width() - izquierda - margen, barra.height() - 2 * margen};
}

void seguimiento::al_empezar() {
  if (!pulso_.isActive()) pulso_.start(entre_miradas);
}

void seguimiento::al_volver() {
  mirar();
  if (ventana_.ocupada()) return;
  pulso_.stop();
  letrero_->preguntar();
}

void seguimiento::mirar() {
  const bool en_orden = f_.ordenes > 0;
  if (en_orden && !en_orden_) estimador_.empezar();
  const labor& ultima = f_.avance.labor;
  if (en_orden) estimador_.mirar(ultima, plat_.ahora_sin_cajas(), trafico_de(f_.link));
  // The box that tells how the work has ended comes up while the command still runs.
  const bool hubo = ultima.cuantas != contadas_;
  const bool hecho = en_orden ? hubo && !ultima.en_curso && plat_.caja_abierta() : hubo || en_orden_;
  const bool trabajo = ultima.cuantas != f_.labores_antes;
  if (hecho && trabajo) estimador_.acabar(ultima);
  if (cargas_ != f_.cargas || (hecho && !trabajo && cargas_ > 0)) estimador_.cargada(f_.v.carga);
  if (fallidos_ != f_.placa.fallidos && !trabajo) estimador_.sin_operacion(sin_contacto(f_));
  fallidos_ = f_.placa.fallidos;
  cargas_ = f_.cargas;
  if (!en_orden) contadas_ = ultima.cuantas;
  en_orden_ = en_orden;
  escribir();
  mapa_->poner_al_dia();
  mirar_contacto(f_);
  letrero_->mirar();
  mirar_detener();
}

/// Pressed while nothing runs, it stops what runs next.
void seguimiento::mirar_detener() {
  const bool espera = f_.avance.cancelar;
  // A press that is taken up before it is released is no click.
  if (!pulsado_) detener_->setDown(espera);
  detener_->setAccessibleDescription(espera ? QStringLiteral("Pulsado: espera a lo que haya que detener") : QString());
}

void seguimiento::escribir() {
  if (escrito_ == estimador_.dicho()) return;
  escrito_ = estimador_.dicho();
  barra_->setTextVisible(!escrito_.breve.empty());
  const QString breve = (escrito_.aviso ? QStringLiteral("⚠ ") : QString()) + qt(escrito_.breve);
  barra_->setFont(cabida(letra_, breve, barra_->width() - barra_->fontMetrics().height() / 2));
  barra_->setFormat(breve);
  QPalette colores = paleta_;
  if (escrito_.aviso) {
    for (const auto papel : {QPalette::Text, QPalette::WindowText}) colores.setColor(papel, color_de_aviso(paleta_));
  }
  barra_->setPalette(colores);
  barra_->setToolTip(qt(escrito_.extenso));
  barra_->setAccessibleDescription(qt(escrito_.extenso));
}

}  // namespace morvane
