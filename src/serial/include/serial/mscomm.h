#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string_view>

#include "platform/plataforma.h"
#include "serial/transporte.h"

namespace morvane {

/// The serial control. Setters that can fail return False and then leave things as they were.
///
/// `OnComm` is raised inside a pass of the event pump, with `CommEvent` 2, whenever at least `RThreshold` characters
/// wait, and again after each `Input` for as long as that remains so. A pass reads the line once and raises at most as
/// many events as characters stand in the buffer, so it ends however much comes in.
///
/// In the character mode (`InputLen` 1 and `RThreshold` 1) everything behind the last ETX in the buffer is held back,
/// so that a framed reply is delivered whole within one pass; only a full buffer is delivered as it stands.
class MSComm final : private fuente_eventos {
 public:
  static constexpr std::size_t InBufferSize = 1024;
  static constexpr int comEvSend = 1;
  static constexpr int comEvReceive = 2;

  /// Both must outlive the control.
  MSComm(plataforma& plat, transporte& linea);
  ~MSComm() override;
  MSComm(const MSComm&) = delete;
  MSComm& operator=(const MSComm&) = delete;

  /// Selects the port, 0 to 9, for the next opening. False if it leads to no device.
  [[nodiscard]] bool CommPort(int numero);
  /// Sets the line parameters for the next opening. False if they make no sense (see `leer_parametros`).
  [[nodiscard]] bool Settings(std::string_view texto);

  bool PortOpen() const { return abierto_; }
  /// Opens or closes the line and says whether it now is as wished. Opening empties the input buffer and may fail;
  /// closing never fails and loses what was not read.
  bool PortOpen(bool abrir);

  int InputLen() const { return input_len_; }
  /// How many characters one `Input` takes; 0 takes all that wait. Takes effect at once.
  void InputLen(int cuantos) { input_len_ = cuantos; }
  int RThreshold() const { return r_threshold_; }
  /// How many waiting characters raise an event, 1 or more. Takes effect at once.
  void RThreshold(int cuantos) { r_threshold_ = cuantos; }

  /// Queues a text for sending and returns at once.
  void Output(std::string_view datos);
  /// Takes characters out of the buffer. The view holds until the next pass or the next `Input`.
  std::string_view Input();

  int CommEvent() const { return comm_event_; }
  std::function<void()> OnComm;

  /// Characters taken off the line since the control was made, held-back and dropped ones included.
  std::uint64_t recibidos() const { return recibidos_; }
  /// Characters in the buffer, held-back ones included.
  std::size_t pendientes() const { return fin_ - inicio_; }
  /// True from the moment a buffer ran full in the character mode and was delivered as it stood, until the next
  /// `Output`, `descartar_entrada` or opening.
  bool desbordado() const { return desbordado_; }
  /// True if the buffer holds an STX with an ETX somewhere behind it.
  bool trama_entera() const;
  /// True if the device behind the open line is gone.
  bool perdido() const { return abierto_ && linea_.perdido(); }
  /// Drops all that has come in and was not read yet, on the line as well.
  void descartar_entrada();
  /// Drops what has not been sent yet.
  void descartar_salida() { linea_.descartar_salida(); }
  /// Raises the events that are due for what stands in the buffer, without reading the line.
  void entregar();

 private:
  void atender() override;
  void vaciar();
  void leer_linea();
  std::size_t disponibles() const;
  bool modo_caracter() const { return input_len_ == 1 && r_threshold_ == 1; }

  plataforma& plat_;
  transporte& linea_;
  std::array<char, InBufferSize> buffer_{};
  /// What waits stands from `inicio_` to `fin_`; the last ETX is right before `tras_etx_`, where there is one. In the
  /// character mode all before `forzado_` is delivered in any case.
  std::size_t inicio_ = 0, fin_ = 0, tras_etx_ = 0, forzado_ = 0;
  std::uint64_t recibidos_ = 0;
  parametros_linea parametros_;
  int puerto_ = 1;
  int input_len_ = 1, r_threshold_ = 1;
  int comm_event_ = 0;
  bool abierto_ = false, desbordado_ = false;
};

}  // namespace morvane
