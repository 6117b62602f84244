#pragma once

#include <csignal>

#include "platform/descriptor.h"

namespace morvane::console {

/// The signals that ask for a stop: SIGINT, SIGTERM and SIGHUP, but for those that whoever started the program wants it
/// to ignore. They are held back from now on, and taken when somebody looks. What is written to a pipe that nobody
/// reads is an error from now on.
class senales {
 public:
  senales();

  /// Takes what has come.
  void mirar();
  /// 0, 1 or 2: how many have come, more than two counted as two.
  int nivel() const { return nivel_; }
  /// The number of the first one; 0 if none has come.
  int primera() const { return primera_; }
  /// Readable while there is something to take.
  int fd() const { return fd_.numero(); }

 private:
  descriptor fd_;
  int nivel_ = 0, primera_ = 0;
};

}  // namespace morvane::console
