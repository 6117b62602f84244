#include "accesible.h"

#include <QAccessibleWidget>

#include "desktop/mapa_qt.h"
#include "taller.h"

namespace morvane {
namespace {

class mapa_accesible final : public QAccessibleWidget, public QAccessibleValueInterface {
 public:
  explicit mapa_accesible(mapa_qt* mapa) : QAccessibleWidget(mapa, QAccessible::Chart), mapa_(*mapa) {}

  void* interface_cast(QAccessible::InterfaceType tipo) override {
    if (tipo != QAccessible::ValueInterface) return QAccessibleWidget::interface_cast(tipo);
    return static_cast<QAccessibleValueInterface*>(this);
  }
  QString text(QAccessible::Text cual) const override {
    switch (cual) {
      case QAccessible::Value:
      case QAccessible::Description:
        return mapa_.texto_del_cursor().replace(QLatin1Char('\n'), QLatin1String("; "));
      case QAccessible::Help:
        return mapa_.resumen();
      default:
        return QAccessibleWidget::text(cual);
    }
  }

  QVariant currentValue() const override { return mapa_.cursor_celda(); }
  QVariant minimumValue() const override { return 0; }
  QVariant maximumValue() const override { return celdas_del_mapa - 1; }
  QVariant minimumStepSize() const override { return 1; }
  void setCurrentValue(const QVariant& valor) override { mapa_.mover_cursor(valor.toInt()); }

 private:
  mapa_qt& mapa_;
};

constexpr const char* propiedad_papel = "papel_accesible";

QAccessibleInterface* fabricar(const QString& /*clase*/, QObject* objeto) {
  if (objeto == nullptr) return nullptr;
  if (auto* mapa = dynamic_cast<mapa_qt*>(objeto)) return new mapa_accesible(mapa);
  const QVariant papel = objeto->property(propiedad_papel);
  auto* control = papel.isValid() ? qobject_cast<QWidget*>(objeto) : nullptr;
  return control == nullptr ? nullptr : new QAccessibleWidget(control, static_cast<QAccessible::Role>(papel.toInt()));
}

}  // namespace

void dar_papel(QWidget& control, QAccessible::Role papel) {
  QAccessible::installFactory(fabricar);
  control.setProperty(propiedad_papel, static_cast<int>(papel));
}

void hacer_accesible(mapa_qt& /*mapa*/) {
  QAccessible::installFactory(fabricar);
}

}  // namespace morvane
