#include "terminal.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace puente {

namespace {

constexpr const char* sin_terminal = "no se puede crear el seudoterminal";

void hacer_crudo(int fd) {
  termios t{};
  logrado(tcgetattr(fd, &t), sin_terminal);
  cfmakeraw(&t);
  t.c_cflag |= CLOCAL | CREAD;
  logrado(tcsetattr(fd, TCSANOW, &t), sin_terminal);
}

}  // namespace

terminal::terminal() : maestro_(logrado(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC), sin_terminal)) {
  logrado(grantpt(*maestro_), sin_terminal);
  logrado(unlockpt(*maestro_), sin_terminal);
  std::array<char, 128> nombre{};
  if (ptsname_r(*maestro_, nombre.data(), nombre.size()) != 0) fallar(sin_terminal);
  nombre_ = nombre.data();
  // Held open for as long as the board lives: a terminal whose device nobody holds gives errors to its master.
  esclavo_ = descriptor(logrado(open(nombre_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC), sin_terminal));
  hacer_crudo(*esclavo_);
  // Without a watch, if the host has run out of them, an exclusive opening outlives its program and nothing else fails.
  vigia_ = descriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (vigia_) inotify_add_watch(*vigia_, nombre_.c_str(), IN_OPEN | IN_CLOSE);
}

std::string terminal::leer(std::size_t cuantos) {
  std::array<char, 4096> trozo;
  const ssize_t n = read(*maestro_, trozo.data(), std::min(cuantos, trozo.size()));
  return {trozo.data(), n > 0 ? static_cast<std::size_t>(n) : 0};
}

void terminal::escribir(std::string_view datos) {
  while (!datos.empty()) {
    const ssize_t n = write(*maestro_, datos.data(), datos.size());
    if (n <= 0) return;
    datos.remove_prefix(static_cast<std::size_t>(n));
  }
}

bool terminal::atender_avisos() {
  // All are of one file and carry no name, so they are of one size.
  std::uint32_t vistos = 0;
  for (inotify_event uno{}; read(*vigia_, &uno, sizeof uno) == sizeof uno;) vistos |= uno.mask;
  if ((vistos & IN_CLOSE) != 0) ioctl(*esclavo_, TIOCNXCL);
  return (vistos & IN_OPEN) != 0;
}

}  // namespace puente
