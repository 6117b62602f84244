#include <QPainter>
#include <QWidget>

#include "accesible.h"
#include "imagenes.h"
#include "taller.h"

namespace morvane {
namespace {

/// Draws its image anew at each size, as large as fits.
class cuadro final : public QWidget {
 public:
  cuadro(QWidget* padre, std::string nombre) : QWidget(padre), nombre_(std::move(nombre)) {}

 protected:
  void paintEvent(QPaintEvent* /*suceso*/) override {
    QPainter pintor(this);
    dibujar(nombre_, pintor, rect());
  }

 private:
  const std::string nombre_;
};

}  // namespace

void hacer(QWidget& padre, PictureBox& origen, taller& t) {
  auto* destino = new cuadro(&padre, origen.Picture);
  dar_papel(*destino, QAccessible::Graphic);
  destino->setAccessibleName(qt(origen.Name));
  mantener(destino, origen, t);
}

}  // namespace morvane
