#pragma once

#include <filesystem>
#include <memory>

#include "desktop/plataforma_qt.h"
#include "desktop/ventana_qt.h"
#include "platform/archivos.h"
#include "platform/transporte_tty.h"
#include "shell/frm_principal.h"

namespace morvane {

/// The whole program but for `main`: platform, files, line, image and main window, wired together. A QApplication must
/// exist.
class programa {
 public:
  /// `directorio` is the application's directory.
  explicit programa(const std::filesystem::path& directorio);
  ~programa();
  programa(const programa&) = delete;
  programa& operator=(const programa&) = delete;

  /// Runs the load event of the main window, which may show boxes, and then shows the window.
  void empezar();
  /// The desktop or a signal wants the program to end: as if the main window had been closed.
  void pedir_fin();

  frm_principal& principal() { return *principal_; }
  ventana_qt& ventana() { return *ventana_; }
  plataforma_qt& plat() { return plat_; }

 private:
  void despues_de_orden();

  archivos ficheros_;
  plataforma_qt plat_;
  transporte_tty linea_;
  Variables_grab v_;
  std::unique_ptr<frm_principal> principal_;
  std::unique_ptr<ventana_qt> ventana_;
};

}  // namespace morvane
