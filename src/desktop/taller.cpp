#include "taller.h"

#include <QFontDatabase>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QPalette>
#include <QWidget>
#include <cmath>

#include "pintura.h"

namespace morvane {
namespace {

constexpr double twips_por_pixel = 15;
constexpr double twips_por_punto = 20;
/// Of the font for which the columns are laid out: 8 pixels at 13 pixels of height.
constexpr double ancho_por_alto = 8.0 / 13;

}  // namespace

int taller::px(double twips) const {
  return static_cast<int>(std::lround(twips / twips_por_pixel * escala));
}

int taller::twips(int px) const {
  return static_cast<int>(std::lround(px * twips_por_pixel / escala));
}

int taller::imagen(int lado) const {
  return lado * static_cast<int>(escala * 2) / 2;
}

QRect taller::px(const lugar& sitio) const {
  return {px(sitio.Left), px(sitio.Top), px(sitio.Width), px(sitio.Height)};
}

double taller::celda(const letra& tipo) {
  return tipo.puntos * twips_por_punto * ancho_por_alto;
}

QFont taller::letra_qt(const letra& tipo, const QFont& normal) const {
  QFont destino = normal;
  if (tipo.puntos > 0) destino.setPixelSize(px(tipo.puntos * twips_por_punto));
  if (tipo.nombre.empty()) return destino;
  QFont fija = letra_de_ancho_fijo(tipo.nombre);
  fija.setPixelSize(destino.pixelSize());
  // Characters may then begin within a pixel, and their width is the same at all scales.
  fija.setHintingPreference(QFont::PreferVerticalHinting);
  const double propio = QFontMetricsF(fija).horizontalAdvance(QLatin1Char('0'));
  fija.setLetterSpacing(QFont::AbsoluteSpacing, celda(tipo) / twips_por_pixel * escala - propio);
  return fija;
}

// Not by `hasFamily`, which works out the host's substitutes too, and takes longer over it than a window to appear.
QFont letra_de_ancho_fijo(const std::string& nombre) {
  const bool hay = QFontDatabase::families().contains(qt(nombre), Qt::CaseInsensitive);
  return hay ? QFont(qt(nombre)) : QFontDatabase::systemFont(QFontDatabase::FixedFont);
}

QString nombre_accesible(const std::string& rotulo, const std::string& ayuda, const std::string& nombre) {
  QString texto = qt(rotulo).remove(QLatin1Char('&')).trimmed();
  if (texto.isEmpty()) texto = qt(ayuda);
  return texto.isEmpty() ? qt(nombre) : texto;
}

QFont cabida(const QFont& tipo, const QString& texto, int ancho) {
  const double falta = QFontMetricsF(tipo).horizontalAdvance(texto);
  if (texto.isEmpty() || falta <= ancho) return tipo;
  QFont estrecha = tipo;
  estrecha.setStretch(static_cast<int>(100 * ancho / falta));
  estrecha.setLetterSpacing(QFont::AbsoluteSpacing, 0);
  return estrecha;
}

void colorear(QWidget& superficie, color fondo) {
  QPalette paleta = superficie.palette();
  const QColor base = tono_de(fondo, QGuiApplication::palette());
  paleta.setColor(QPalette::Window, base);
  paleta.setColor(QPalette::WindowText, qGray(base.rgb()) > 127 ? Qt::black : Qt::white);
  superficie.setPalette(paleta);
  superficie.setAutoFillBackground(true);
}

void mantener(QWidget* destino, control& origen, taller& t) {
  destino->setObjectName(qt(origen.Name));
  t.al_cambiar([destino, &origen, t] {
    if (origen.sitio.valor() != lugar{}) destino->setGeometry(t.px(origen.sitio));
    destino->setVisible(origen.Visible);
    destino->setEnabled(origen.Enabled);
  });
}

QString ayuda_literal(const QString& texto) {
  constexpr qsizetype renglon = 100;
  if (texto.isEmpty()) return texto;
  const auto reparto = texto.size() > renglon ? QStringLiteral("pre-wrap") : QStringLiteral("pre");
  return QStringLiteral("<p style='white-space:%1'>%2</p>").arg(reparto, texto.toHtmlEscaped());
}

}  // namespace morvane
