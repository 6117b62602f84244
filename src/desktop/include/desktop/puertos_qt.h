#pragma once

#include <filesystem>

#include "desktop/placa_simulada.h"
#include "desktop/plataforma_qt.h"
#include "desktop/ventana_qt.h"
#include "shell/frm_cfg_pto_serial.h"

class QComboBox;

namespace morvane {

/// What the port dialog tells and does about the ports beside the controls that it describes: tool tips that say where
/// each port leads and whether it could be opened, as of the moment at which the dialog or its list appears, and a
/// context menu that links adapters and the simulated board as the chosen port.
class puertos_qt final : public QObject {
 public:
  /// All must outlive it; it belongs to `ventana`, which is that of `f`.
  puertos_qt(ventana_qt& ventana, const frm_cfg_pto_serial& f, std::filesystem::path directorio, placa_simulada& placa,
             plataforma& plat);

 protected:
  bool eventFilter(QObject* quien, QEvent* suceso) override;

 private:
  /// The chosen port, 1 to 9; 0 if the text is no port.
  int elegido() const;
  void explicar();
  void llenar_menu();
  void llenar_enlaces(QMenu& menu, int numero);
  void hacer(const std::function<std::string()>& cambio);

  ventana_qt& ventana_;
  const std::filesystem::path directorio_;
  placa_simulada& placa_;
  plataforma& plat_;
  QComboBox* lista_;
};

}  // namespace morvane
