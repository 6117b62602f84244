#include "platform/proceso.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <climits>
#include <csignal>
#include <stop_token>
#include <utility>

#include "platform/descriptor.h"

namespace morvane {

namespace {

bool ignorada(int una) {
  struct sigaction como {};
  return sigaction(una, nullptr, &como) == 0 && como.sa_handler == SIG_IGN;
}

/// False when `fin` has something to read.
bool esperar_una(int senales, int fin) {
  std::array<pollfd, 2> fds{{{senales, POLLIN, 0}, {fin, POLLIN, 0}}};
  ::poll(fds.data(), fds.size(), -1);
  return fds[1].revents == 0;
}

}  // namespace

struct peticiones_de_fin::fuente {
  descriptor senales;
  /// Becomes readable when the listening is to end.
  descriptor basta{eventfd(0, EFD_CLOEXEC)};
};

std::filesystem::path carpeta_del_programa() {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

bool se_puede_escribir_en(const std::filesystem::path& carpeta) {
  return ::access(carpeta.c_str(), W_OK) == 0;
}

void decir_por_errores(std::string texto) {
  texto.resize(std::min<std::size_t>(texto.size(), PIPE_BUF - 1));
  texto += '\n';
  pollfd salida{STDERR_FILENO, POLLOUT, 0};
  // What has room at all has room for this much.
  if (::poll(&salida, 1, 0) == 1 && (salida.revents & POLLOUT) != 0)
    (void)!::write(STDERR_FILENO, texto.data(), texto.size());
}

peticiones_de_fin::peticiones_de_fin() : fuente_(std::make_unique<fuente>()) {
  std::signal(SIGPIPE, SIG_IGN);
  sigset_t cuales;
  sigemptyset(&cuales);
  for (const int una : {SIGTERM, SIGINT, SIGHUP}) {
    if (!ignorada(una)) sigaddset(&cuales, una);
  }
  if (!fuente_->basta.abierto()) return;
  fuente_->senales = descriptor(signalfd(-1, &cuales, SFD_NONBLOCK | SFD_CLOEXEC));
  if (fuente_->senales.abierto()) sigprocmask(SIG_BLOCK, &cuales, nullptr);
}

peticiones_de_fin::~peticiones_de_fin() = default;

std::jthread peticiones_de_fin::escuchar(std::function<void()> atender) const {
  if (!fuente_->senales.abierto()) return {};
  const int senales = fuente_->senales.numero(), fin = fuente_->basta.numero();
  return std::jthread([senales, fin, atender = std::move(atender)](const std::stop_token& basta) {
    const std::stop_callback despertar(basta, [fin] { eventfd_write(fin, 1); });
    while (esperar_una(senales, fin)) {
      signalfd_siginfo una{};
      if (::read(senales, &una, sizeof una) == sizeof una) atender();
    }
  });
}

}  // namespace morvane
