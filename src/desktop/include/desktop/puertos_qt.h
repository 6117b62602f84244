#pragma once

#include <filesystem>

#include "desktop/placa_simulada.h"
#include "desktop/plataforma_qt.h"
#include "desktop/ventana_qt.h"
#include "shell/frm_cfg_pto_serial.h"

class QComboBox;
class QLabel;

namespace morvane {

/// What the port dialog tells and does about the ports beside the controls that it describes: tool tips that say where
/// each port leads and whether it could be opened, as of the moment at which the dialog or its list appears; a line
/// that says what is in force and whether it is saved; and a menu, the context menu and that of a button, which links
/// adapters and the simulated board as the chosen port and makes the settings file where it is missing.
class puertos_qt final : public QObject {
 public:
  /// All must outlive it; it belongs to `ventana`, which is that of `f`. `al_cambiar` is called when what is at a port
  /// may have changed.
  puertos_qt(ventana_qt& ventana, frm_cfg_pto_serial& f, std::filesystem::path directorio, placa_simulada& placa,
             plataforma& plat, std::function<void()> al_cambiar);

 protected:
  bool eventFilter(QObject* quien, QEvent* suceso) override;

 private:
  /// The chosen port, 1 to 9; 0 if the text is no port.
  int elegido() const;
  QWidget* hijo(const control& cual) const;
  void poner_linea();
  void poner_boton();
  void explicar();
  void situar();
  void llenar_menu();
  void llenar_enlaces(QMenu& menu, int numero);
  void hacer(const std::function<std::string()>& cambio);

  ventana_qt& ventana_;
  frm_cfg_pto_serial& f_;
  const std::filesystem::path directorio_;
  placa_simulada& placa_;
  plataforma& plat_;
  std::function<void()> al_cambiar_;
  QComboBox* lista_;
  QLabel* linea_;
};

}  // namespace morvane
