#pragma once

#include <QFont>
#include <QRect>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "conversiones.h"
#include "platform/controles.h"

class QMenu;
class QMenuBar;
class QWidget;

namespace morvane {

/// What the makers of widgets share while a window is built.
struct taller {
  /// Pixels for 15 twips: 1 at the reference font, more with larger ones.
  double escala;
  /// Runs a handler of the shell and what has to follow on it.
  std::function<void(const evento&)> atender;
  std::vector<std::function<void()>>& actualizaciones;
  /// The caption of the window, for what has no text of its own.
  std::string titulo;

  int px(double twips) const;
  int twips(int px) const;
  /// The side of an image, which grows in half steps: at these its edges fall on pixels.
  int imagen(int lado) const;
  QRect px(const lugar& sitio) const;
  /// The font `tipo` in the size of the window; what it leaves open is as in `normal`. All fonts with a name have
  /// characters of one width, `celda` twips of it.
  QFont letra_qt(const letra& tipo, const QFont& normal) const;
  static double celda(const letra& tipo);
  /// From the left edge of a control to its text, where text has to stand in columns.
  int margen() const { return px(45); }
  /// Runs `toma` now and whenever a property of the window has changed.
  void al_cambiar(std::function<void()> toma) {
    toma();
    actualizaciones.push_back(std::move(toma));
  }
};

/// The font `nombre`, in any size, or where the host lacks it, its own one with characters of one width.
QFont letra_de_ancho_fijo(const std::string& nombre);

/// The text that names a control to assistive technology: the first that is not empty, without its access key.
QString nombre_accesible(const std::string& rotulo, const std::string& ayuda, const std::string& nombre);

/// The font `tipo`, made narrower where `texto` would be wider than `ancho` pixels.
QFont cabida(const QFont& tipo, const QString& texto, int ancho);

/// Gives a surface its colour, or the counterpart of it on a dark desktop, and what stands on it a colour that can be
/// read there.
void colorear(QWidget& superficie, color fondo);

/// Gives a widget the name of its control, and keeps it where, shown and enabled as the control is.
void mantener(QWidget* destino, control& origen, taller& t);

/// Fills the menu bar of a window.
void hacer_menus(QMenuBar& barra, const std::vector<Menu*>& menus, taller& t);
/// Fills a menu.
void hacer_lista(QMenu& destino, const std::vector<Menu*>& lista, taller& t);

/// These make the widget of a control as a child of `padre`, whose size is final, and keep it up to date.
void hacer(QWidget& padre, Label& etiqueta, taller& t);
void hacer(QWidget& padre, PictureBox& cuadro, taller& t);
void hacer(QWidget& padre, Line& linea, taller& t);
void hacer(QWidget& padre, ListBox& lista, taller& t);
void hacer(QWidget& padre, Toolbar& barra, taller& t);
void hacer(QWidget& padre, StatusBar& barra, taller& t);
void hacer_controles(QWidget& padre, const std::vector<cualquier_control>& controles, taller& t);
/// For a bar whose place is given by its surroundings.
QWidget* hacer_progreso(QWidget& padre, ProgressBar& barra, taller& t);

/// A tool tip that is shown as it is written, whatever stands in it. Only what is too long for a line is broken; Qt
/// would break what is shorter as well.
QString ayuda_literal(const QString& texto);

}  // namespace morvane
