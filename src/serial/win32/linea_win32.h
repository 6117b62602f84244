#pragma once

#include <windows.h>

#include <array>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/manejador.h"
#include "serial/transporte.h"

namespace morvane {

/// Sets an open port as a raw line without flow control, DTR and RTS on, whose reads give at once what is there. False
/// if the driver does not take the parameters as they stand.
bool ajustar_com(HANDLE puerto, const parametros_linea& linea);

/// One direction of an open port: an operation that the host goes on with by itself.
class operacion {
 public:
  operacion() : aviso_(::CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}
  operacion(const operacion&) = delete;
  operacion& operator=(const operacion&) = delete;

  /// To be given to ReadFile or WriteFile, whose result goes to `empezada`.
  OVERLAPPED* nueva();
  /// False if it could not be begun at all.
  bool empezada(BOOL resultado);
  bool en_marcha() const { return en_marcha_; }
  /// Raised when it has come to its end.
  HANDLE aviso() const { return aviso_.numero(); }
  /// Looks how far the operation is. False after an error; else, once it is no longer under way, `hechos` has the
  /// number of its bytes.
  bool mirar(HANDLE puerto, DWORD& hechos);
  /// Waits for an operation that was called off. False if the driver does not let go of it.
  bool soltada(DWORD paciencia_ms) const;

 private:
  manejador aviso_;
  OVERLAPPED o_{};
  bool en_marcha_ = false;
};

}  // namespace morvane
