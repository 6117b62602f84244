#include "senales.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>

namespace morvane::console {

namespace {

sigset_t las_que_cuentan() {
  sigset_t cuales;
  sigemptyset(&cuales);
  for (const int s : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction como {};
    const bool ignorada = ::sigaction(s, nullptr, &como) == 0 && como.sa_handler == SIG_IGN;
    if (!ignorada) sigaddset(&cuales, s);
  }
  return cuales;
}

}  // namespace

senales::senales() {
  // A reader that has gone and a file that may not grow further are errors of writing, and no end.
  for (const int s : {SIGPIPE, SIGXFSZ}) (void)std::signal(s, SIG_IGN);
  const sigset_t cuales = las_que_cuentan();
  descriptor fd(::signalfd(-1, &cuales, SFD_CLOEXEC | SFD_NONBLOCK));
  // Where they cannot be taken they keep their effect.
  if (fd.abierto() && ::sigprocmask(SIG_BLOCK, &cuales, nullptr) == 0) fd_ = std::move(fd);
}

void senales::mirar() {
  signalfd_siginfo una{};
  while (fd_.abierto() && ::read(fd_.numero(), &una, sizeof una) == sizeof una) {
    if (primera_ == 0) primera_ = static_cast<int>(una.ssi_signo);
    nivel_ = std::min(nivel_ + 1, 2);
  }
}

}  // namespace morvane::console
