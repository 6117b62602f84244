#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "serial/transporte.h"

namespace morvane {

class ajuste_tty;

/// Serial lines of the host, as terminal devices.
///
/// Port `n` is the link `puertos/COMn` in the program's directory if there is one; else 1 to 4 are /dev/ttyS0 to 3,
/// 5 to 8 /dev/ttyUSB0 to 3 and 9 /dev/ttyACM0. Links are resolved before a device is opened. An open line is taken
/// exclusively, against other programs and other links to the same device. Closing it puts the device's settings back
/// and does not drop DTR. Up to 64 KiB of output wait for a far end that does not read; a text that goes beyond is
/// dropped whole. A link to a pseudo-terminal that came into being after the link leads to no device: it was made for
/// another terminal of that number.
class transporte_tty final : public transporte {
 public:
  /// `directorio` is the program's directory, which holds `puertos/`.
  explicit transporte_tty(std::filesystem::path directorio);
  ~transporte_tty() override;
  transporte_tty(const transporte_tty&) = delete;
  transporte_tty& operator=(const transporte_tty&) = delete;

  bool existe(int numero) override;
  bool abrir(int numero, const parametros_linea& linea) override;
  /// The same for the device that `ruta` names or links to. The cause has no port's number.
  bool abrir_ruta(const std::filesystem::path& ruta, const parametros_linea& linea);
  void escribir(std::string_view datos) override;
  std::size_t leer(std::span<char> destino) override;
  bool perdido() const override { return perdido_; }
  void cerrar() override;
  /// Also puts the device's settings back and lets programs in again that ask for no lock, since the end of the program
  /// alone would do neither. What is sent after this goes out as the device was set before.
  void descartar_salida() override;

  /// What a program may wait on for something to come in, by `poll`; -1 while the line is closed.
  int descriptor_abierto() const { return fd_; }
  /// The device that port `numero` leads to, links resolved; empty if there is none. Asking tells nobody.
  std::filesystem::path dispositivo(int numero) const;
  /// Why the last `existe`, `abrir` or `abrir_ruta` gave False; nothing after True. Of a device that is busy it names
  /// the programs that have it, as far as this user may know.
  const std::optional<causa_puerto>& causa() const { return causa_; }

 private:
  bool falla(causa_puerto porque);
  std::optional<causa_puerto> tomar(const std::filesystem::path& ruta, const parametros_linea& linea);
  void enviar_pendiente();

  std::filesystem::path directorio_;
  std::unique_ptr<ajuste_tty> ajuste_;
  int fd_ = -1;
  bool perdido_ = false;
  std::string salida_;
  std::optional<causa_puerto> causa_;
};

}  // namespace morvane
