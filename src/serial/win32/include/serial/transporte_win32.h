#pragma once

#include <filesystem>
#include <memory>
#include <optional>

#include "serial/transporte.h"

namespace morvane {

/// Serial lines of Windows: port `n` is the host's COMn. The host lets a port be open only once. Reading and writing go
/// on behind the calls, so that no driver can hold them up. Up to 64 KiB of output wait for a far end that does not
/// read; a text that goes beyond is dropped whole.
class transporte_win32 final : public transporte {
 public:
  /// `directorio` is the program's directory; the ports do not depend on it.
  explicit transporte_win32(const std::filesystem::path& directorio);
  ~transporte_win32() override;
  transporte_win32(const transporte_win32&) = delete;
  transporte_win32& operator=(const transporte_win32&) = delete;

  bool existe(int numero) override;
  bool abrir(int numero, const parametros_linea& linea) override;
  void escribir(std::string_view datos) override;
  std::size_t leer(std::span<char> destino) override;
  bool perdido() const override { return perdido_; }
  void cerrar() override;
  void descartar_salida() override;

  /// The device of port `numero`, as \\.\COMn; empty if there is none. Asking tells nobody.
  std::filesystem::path dispositivo(int numero) const;
  /// What the host raises when something has come in; null while no line is open, or none is being read.
  void* aviso() const;
  /// Why the last `existe` or `abrir` gave False; nothing after True.
  const std::optional<causa_puerto>& causa() const { return causa_; }

 private:
  struct linea_abierta;

  bool falla(causa_puerto porque);
  void perder();

  std::unique_ptr<linea_abierta> linea_;
  bool perdido_ = false;
  std::optional<causa_puerto> causa_;
};

}  // namespace morvane
