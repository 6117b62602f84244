#include "pintura.h"

#include <QFontInfo>
#include <QPalette>
#include <algorithm>
#include <cmath>

namespace morvane {
namespace {

constexpr QRgb aviso_en_claro = 0xFFA02000, aviso_en_oscuro = 0xFFFF9E7A;
constexpr double parte_menor = 0.9;
constexpr float saturacion_en_oscuro = 0.35F, claridad_en_oscuro = 0.28F;

}  // namespace

bool es_oscura(const QPalette& paleta) {
  return qGray(paleta.color(QPalette::Window).rgb()) < 128;
}

QColor color_de_aviso(const QPalette& paleta) {
  return es_oscura(paleta) ? aviso_en_oscuro : aviso_en_claro;
}

QColor tono_de(std::uint32_t dado, const QPalette& escritorio) {
  const QColor claro = QColor::fromRgb(dado);
  if (!es_oscura(escritorio)) return claro;
  if (claro.hslSaturationF() < 0.05F) return escritorio.color(QPalette::Window);
  return QColor::fromHslF(claro.hslHueF(), saturacion_en_oscuro, claridad_en_oscuro);
}

QFont letra_menor(const QFont& normal) {
  QFont menor = normal;
  menor.setPixelSize(std::max(6, static_cast<int>(std::lround(QFontInfo(normal).pixelSize() * parte_menor))));
  return menor;
}

}  // namespace morvane
