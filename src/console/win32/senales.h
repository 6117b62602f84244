#pragma once

#include <windows.h>

namespace morvane::console {

/// The wishes to stop that a console tells of: Ctrl-C and Ctrl-Break, which count as SIGINT, and the console's or the
/// session's end, which counts as SIGTERM and which the host grants some seconds for. To be made once.
class senales {
 public:
  senales();
  ~senales();
  senales(const senales&) = delete;
  senales& operator=(const senales&) = delete;

  /// 0, 1 or 2: how many have come, more than two counted as two.
  int nivel() const;
  /// The number of the first one; 0 if none has come.
  int primera() const;
  /// Raised from the first one on.
  HANDLE aviso() const;
};

}  // namespace morvane::console
