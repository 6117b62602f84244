#include "senales.h"

#include <sys/signalfd.h>
#include <unistd.h>

#include <csignal>
#include <utility>

namespace morvane {

namespace {

/// A signal that whoever started the program wants it to ignore, such as the hang-up under nohup.
bool ignorada(int una) {
  struct sigaction como {};
  return sigaction(una, nullptr, &como) == 0 && como.sa_handler == SIG_IGN;
}

}  // namespace

senales::senales() {
  sigset_t cuales;
  sigemptyset(&cuales);
  for (const int una : {SIGTERM, SIGINT, SIGHUP}) {
    if (!ignorada(una)) sigaddset(&cuales, una);
  }
  descriptor_ = signalfd(-1, &cuales, SFD_NONBLOCK | SFD_CLOEXEC);
  // Without the descriptor the signals keep their usual effect.
  if (descriptor_ >= 0) sigprocmask(SIG_BLOCK, &cuales, nullptr);
}

senales::~senales() {
  aviso_.reset();
  if (descriptor_ >= 0) close(descriptor_);
}

void senales::escuchar(std::function<void()> atender) {
  if (descriptor_ < 0) return;
  aviso_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
  QObject::connect(aviso_.get(), &QSocketNotifier::activated, aviso_.get(),
                   [descriptor = descriptor_, atender = std::move(atender)] {
                     signalfd_siginfo senal{};
                     if (read(descriptor, &senal, sizeof senal) == sizeof senal) atender();
                   });
}

}  // namespace morvane
