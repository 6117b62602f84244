#pragma once

#include <QTimer>
#include <functional>

#include "desktop/letrero_qt.h"
#include "desktop/mapa_qt.h"
#include "desktop/ventana_qt.h"
#include "platform/plataforma.h"
#include "shell/estimador.h"
#include "shell/frm_principal.h"

class QProgressBar;

namespace morvane {

/// Shows how a command gets on, beside the controls of the main window: the map in its free surface, which gives way to
/// the panel of the range, on its bar percentage, speed and time left, in the free half of the toolbar port and board,
/// and a stop that still waits for something to stop by a button that stays down. Looks at the models ten times a
/// second while a command runs, and not at all otherwise.
class seguimiento {
 public:
  /// All must outlive it; `ventana` shows `f`.
  /// `rotular` gives port and device in a few words.
  seguimiento(frm_principal& f, const plataforma& plat, ventana_qt& ventana, std::function<std::string()> rotular);
  seguimiento(const seguimiento&) = delete;
  seguimiento& operator=(const seguimiento&) = delete;

  /// A handler of the window begins, or has returned.
  void al_empezar();
  void al_volver();

  /// True while it looks.
  bool mirando() const { return pulso_.isActive(); }
  mapa_qt& mapa() { return *mapa_; }
  letrero_qt& letrero() { return *letrero_; }

 private:
  void mirar();
  void mirar_detener();
  void escribir();
  QRect superficie_libre() const;
  QRect barra_libre() const;

  frm_principal& f_;
  const plataforma& plat_;
  ventana_qt& ventana_;
  QProgressBar* barra_;
  const QFont letra_;
  const QPalette paleta_;
  mapa_qt* mapa_;
  letrero_qt* letrero_;
  QToolButton* detener_;
  /// The user is pressing it now.
  bool pulsado_ = false;
  estimador estimador_;
  estimador::textos escrito_;
  QTimer pulso_;
  bool en_orden_ = false;
  /// Operations up to the end of the last command.
  unsigned contadas_ = 0;
  /// Loads that have been told of, and commands that found no board.
  unsigned cargas_ = 0, fallidos_ = 0;
};

}  // namespace morvane
