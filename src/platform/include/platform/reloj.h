#pragma once

#include <chrono>
#include <functional>

namespace morvane {

class plataforma;

/// A point on a platform's clock: the time since an origin of the platform's own. The clock never goes back.
using instante = std::chrono::microseconds;
using milisegundos = std::chrono::milliseconds;

/// Measures a stretch of time on a platform's clock. While it runs the platform knows when it will be due, so that a
/// clock that does not run by itself can jump there; and it starts anew whenever a message box closes, since the time
/// that a user takes to answer is nobody's silence. The platform must outlive it.
class reloj {
 public:
  /// Stopped at first. `plazo` must be above 0.
  reloj(plataforma& plat, milisegundos plazo);
  virtual ~reloj();
  reloj(const reloj&) = delete;
  reloj& operator=(const reloj&) = delete;

  /// Begins to count, from now on, also if it was counting already.
  void arrancar();
  void parar() { en_marcha_ = false; }
  bool en_marcha() const { return en_marcha_; }
  /// The moment at which it will be due; only meaningful while it runs.
  instante vence() const { return inicio_ + plazo_; }
  /// True while it runs and its time has passed.
  bool vencido() const;

 protected:
  friend class plataforma;
  /// Called by a pass of the pump when the time has passed.
  virtual void tocar() {}

  milisegundos plazo() const { return plazo_; }
  void plazo(milisegundos nuevo) { plazo_ = nuevo; }

 private:
  plataforma& plat_;
  milisegundos plazo_;
  instante inicio_{0};
  bool en_marcha_ = false;
};

/// A timer control. While enabled it raises `OnTimer` each `Interval`, inside a pass of the event pump and never while
/// a message box is open; periods that were missed give one tick. Enabling an enabled timer does not restart it.
class Timer final : public reloj {
 public:
  Timer(plataforma& plat, milisegundos intervalo) : reloj(plat, intervalo) {}

  milisegundos Interval() const { return plazo(); }
  bool Enabled() const { return en_marcha(); }
  void Enabled(bool si);

  std::function<void()> OnTimer;

 private:
  void tocar() override;
};

}  // namespace morvane
