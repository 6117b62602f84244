#pragma once

#include <filesystem>
#include <string>

namespace morvane {

/// What a serial device says of itself; empty texts where it says nothing.
struct adaptador {
  std::string fabricante, producto, serie;
  /// "FT232R USB UART (FTDI)"; empty without a product.
  std::string nombre() const;
};

/// Of the device `dispositivo`, links resolved. `raiz` is the root of the host's files. Opens no device.
adaptador adaptador_de(const std::filesystem::path& dispositivo, const std::filesystem::path& raiz = "/");

}  // namespace morvane
