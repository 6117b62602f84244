#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace morvane {

/// What a serial device says of itself; empty texts where it says nothing.
struct adaptador {
  std::string fabricante, producto, serie;
  /// "0403:6001", the numbers by which its maker and the product are known on USB.
  std::string identidad;
  /// The kernel's driver, such as "ftdi_sio".
  std::string conductor;
  /// For how long its driver lets it hold replies back, in milliseconds; nothing where the driver has no such setting.
  std::optional<int> retencion_ms;
  /// "FT232R USB UART (FTDI)"; its numbers where it does not say its product, empty where it has none either.
  std::string nombre() const;
};

/// Of the device `dispositivo`, links resolved. `raiz` is the root of the host's files, where these tell it. Opens no
/// device.
adaptador adaptador_de(const std::filesystem::path& dispositivo, const std::filesystem::path& raiz = "/");

}  // namespace morvane
