#pragma once

#include "link/enlace.h"
#include "link/puerto.h"
#include "platform/controles.h"

namespace morvane {

/// The window in which the user chooses port and speed. Each time that it loads, it reads the settings file anew. A
/// choice from a list is in force at once; typed text reaches nothing. Saving needs the port to open with the choice.
struct frm_cfg_pto_serial {
  /// `e` must outlive the window.
  explicit frm_cfg_pto_serial(enlace& e);
  frm_cfg_pto_serial(const frm_cfg_pto_serial&) = delete;
  frm_cfg_pto_serial& operator=(const frm_cfg_pto_serial&) = delete;

  Form ventana;
  Label Label1, Label2;
  ComboBox cmb_s_velocity, cmb_s_puerto;
  CommandButton btn_guardar, btn_salir;

  /// What holds now, for the line that the dialog keeps up to date.
  struct situacion {
    std::string texto;
    /// What is seen is not what holds, or will not be kept.
    bool aviso = false;
  };
  situacion describir() const;
  /// True if there is no settings file.
  bool sin_fichero() const { return faltan_ajustes(e_); }
  /// Makes the settings file that is missing, and shows what it holds.
  void crear_fichero();

 private:
  void mostrar_valores();

  enlace& e_;
};

}  // namespace morvane
