#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/pendiente.h"
#include "platform/plataforma.h"
#include "serial/transporte.h"

namespace morvane {

/// What stands at the far end of a line that lives in memory, on the platform's clock.
class extremo : public pendiente {
 public:
  /// The program has written `datos` at the moment `ahora`.
  virtual void recibir(std::string_view datos, instante ahora) = 0;
  /// Takes at most `cuantos` characters that have reached the program by `ahora`.
  virtual std::string entregar(std::size_t cuantos, instante ahora) = 0;
  /// When the next character will reach the program, if one is on its way.
  std::optional<instante> proximo() const override = 0;
  virtual bool colgado() const { return false; }
  /// The program has opened the line, or closed it.
  virtual void abierta() {}
  virtual void cerrada() {}
};

/// A line in memory. Whether ports exist and can be opened is set from outside, so nobody is told why one cannot.
class transporte_memoria final : public transporte {
 public:
  transporte_memoria(plataforma& plat, extremo& otro) : plat_(plat), otro_(otro) {}

  bool existe(int numero) override { return hay_puerto && numero >= 1; }
  bool abrir(int numero, const parametros_linea& linea) override;
  void escribir(std::string_view datos) override;
  std::size_t leer(std::span<char> destino) override;
  bool perdido() const override { return abierta_ && otro_.colgado(); }
  void cerrar() override;
  void descartar_salida() override {}

  bool abierta() const { return abierta_; }
  /// Everything written so far, in order.
  const std::string& escrito() const { return escrito_; }
  /// The parameters of the last opening.
  const parametros_linea& linea() const { return parametros_; }

  bool hay_puerto = true;
  bool ocupado = false;
  int aperturas = 0;

 private:
  plataforma& plat_;
  extremo& otro_;
  parametros_linea parametros_;
  std::string escrito_;
  bool abierta_ = false;
};

}  // namespace morvane
