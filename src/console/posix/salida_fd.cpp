#include "salida_fd.h"

#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <string>

namespace morvane::console {

namespace {

/// What a pipe that takes anything takes at once.
constexpr std::size_t trozo = 512;

bool con_color() {
  const char* no = std::getenv("NO_COLOR");
  const char* terminal = std::getenv("TERM");
  const bool sabe = terminal != nullptr && *terminal != '\0' && std::string_view(terminal) != "dumb";
  return sabe && (no == nullptr || *no == '\0');
}

}  // namespace

salida_fd::salida_fd(int fd, senales& paran) : fd_(fd), paran_(paran) {
  terminal = ::isatty(fd) == 1;
  color = terminal && con_color();
  winsize tamano{};
  constexpr int ancho_minimo = 20;
  if (terminal && ::ioctl(fd, TIOCGWINSZ, &tamano) == 0 && tamano.ws_col >= ancho_minimo) ancho = tamano.ws_col;
}

bool salida_fd::lista() {
  pollfd p{fd_, POLLOUT, 0};
  return !fallida_ && ::poll(&p, 1, 0) == 1 && (p.revents & POLLOUT) != 0;
}

/// Until something can be written. False if it cannot be and a second stop has come.
bool salida_fd::esperar() {
  for (;;) {
    std::array<pollfd, 2> p{{{fd_, POLLOUT, 0}, {paran_.fd(), POLLIN, 0}}};
    const bool sin_prisa = paran_.nivel() < 2;
    const int cuantos = ::poll(p.data(), p.size(), sin_prisa ? -1 : 0);
    if (cuantos < 0 && errno != EINTR) return false;
    if (cuantos > 0 && p[0].revents != 0) return true;
    if (!sin_prisa) return false;
    paran_.mirar();
  }
}

void salida_fd::escribir(std::string_view texto) {
  while (!fallida_ && !texto.empty()) {
    if (!esperar()) {
      fallida_ = true;
      return;
    }
    const ssize_t n = ::write(fd_, texto.data(), std::min(texto.size(), trozo));
    if (n > 0) {
      texto.remove_prefix(static_cast<std::size_t>(n));
    } else if (errno != EINTR && errno != EAGAIN) {
      fallida_ = true;
    }
  }
}

}  // namespace morvane::console
