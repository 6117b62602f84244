#pragma once

#include <QTimer>
#include <filesystem>
#include <memory>

#include "desktop/otras_ventanas.h"
#include "desktop/placa_simulada.h"
#include "desktop/plataforma_qt.h"
#include "desktop/ventana_qt.h"
#include "files/archivos.h"
#include "serial/sistema.h"
#include "shell/frm_principal.h"

namespace morvane {

class seguimiento;
class recepcion_qt;
class ayuda_f1;

/// Names the application, gives it its icon and Qt's own texts in Spanish, and leaves its end to `programa`. To be
/// called once, right after the QApplication was made.
void preparar_aplicacion();

/// The whole program but for `main`: platform, files, line, image and main window, wired together. A QApplication must
/// exist. When the main window closes it ends the event loop with `QCoreApplication::exit(0)`.
class programa {
 public:
  /// `directorio` is the application's directory.
  explicit programa(const std::filesystem::path& directorio);
  ~programa();
  programa(const programa&) = delete;
  programa& operator=(const programa&) = delete;

  /// Runs the load event of the main window, which may show boxes, and then shows the window; unless the program was
  /// asked to end meanwhile. To be called before the event loop starts.
  void empezar();
  /// The desktop or a signal wants the program to end: as if the main window had been closed, and nobody were there to
  /// answer boxes any more. May be called at any time, from within an event.
  void pedir_fin();

  frm_principal& principal() { return *principal_; }
  ventana_qt& ventana() { return *ventana_; }

 private:
  bool ocupado() const { return empezando_ || ventana_->ocupada() || otras_.ocupadas(); }
  void sincronizar();
  /// Shows a dump with this address in sight.
  void abrir_volcado(frm_buffer& vista, std::int32_t dir);
  void completar_vista(const Form& forma, ventana_qt& ventana);
  void avisar_fallo(const std::string& motivo);
  bool puede_cerrarse();
  void despues_de_orden();
  void acabar();

  const std::filesystem::path directorio_;
  archivos ficheros_;
  plataforma_qt plat_;
  transporte_del_sistema linea_;
  placa_simulada placa_;
  Variables_grab v_;
  std::unique_ptr<frm_principal> principal_;
  std::unique_ptr<ventana_qt> ventana_;
  std::unique_ptr<seguimiento> seguimiento_;
  std::unique_ptr<recepcion_qt> recepcion_;
  std::unique_ptr<ayuda_f1> ayuda_;
  otras_ventanas otras_;
  QTimer fin_;
  bool empezando_ = false;
  /// A request to end that the handlers that are running must return from first.
  bool fin_pendiente_ = false;
};

}  // namespace morvane
