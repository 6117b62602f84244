#pragma once

#include <QSocketNotifier>
#include <csignal>
#include <functional>
#include <memory>

namespace morvane {

/// Turns SIGTERM, SIGINT and SIGHUP into calls from Qt's event loop.
class senales {
 public:
  /// Holds the three signals back from now on; to be made before any thread is.
  senales();
  ~senales();
  senales(const senales&) = delete;
  senales& operator=(const senales&) = delete;

  /// Calls `atender` for each signal, those included that came before. A QApplication must exist.
  void escuchar(std::function<void()> atender);

 private:
  int descriptor_ = -1;
  std::unique_ptr<QSocketNotifier> aviso_;
};

}  // namespace morvane
