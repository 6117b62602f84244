#pragma once

#include <QRect>
#include <QString>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/controles.h"

class QMenuBar;
class QWidget;

namespace morvane {

inline QString qt(const std::string& texto) {
  return QString::fromStdString(texto);
}

/// What the makers of widgets share while a window is built.
struct taller {
  /// Pixels for 15 twips: 1 at the reference font, more with larger ones.
  double escala;
  /// Runs a handler of the shell and what has to follow on it.
  std::function<void(const evento&)> atender;
  std::vector<std::function<void()>>& actualizaciones;

  int px(int twips) const;
  /// The side of an image, which grows in whole steps so that it stays sharp.
  int imagen(int lado) const;
  QRect px(const lugar& sitio) const;
  /// Runs `toma` now and whenever a property of the window has changed.
  void al_cambiar(std::function<void()> toma) {
    toma();
    actualizaciones.push_back(std::move(toma));
  }
};

/// The text that names a control to assistive technology: the first that is not empty, without its access key.
QString nombre_accesible(const std::string& rotulo, const std::string& ayuda, const std::string& nombre);

/// Fills the menu bar of a window.
void hacer_menus(QMenuBar& barra, const std::vector<Menu*>& menus, taller& t);

/// These make the widget of a control as a child of `padre`, whose size is final, and keep it up to date.
void hacer_barra(QWidget& padre, Toolbar& barra, taller& t);
void hacer_estado(QWidget& padre, StatusBar& barra, taller& t);
void hacer_controles(QWidget& padre, const std::vector<cualquier_control>& controles, taller& t);
/// For a bar whose place is given by its surroundings.
QWidget* hacer_progreso(QWidget& padre, ProgressBar& barra, taller& t);

}  // namespace morvane
