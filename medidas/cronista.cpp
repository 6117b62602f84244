// A board that notes times. It takes frames off a pseudo-terminal of its own and answers as the simulated board does,
// each character of the reply at its moment of an absolute schedule that begins with the frame's arrival.
//
// Usage: cronista LINK BAUD (0: no pace). Ends with SIGTERM and then prints, for each frame, the first character of its
// command, the nanoseconds from the last character of the reply before to this frame's arrival, and those from the
// arrival of the frame before.

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

#include "bridge/placa.h"

namespace {

constexpr char ETX = '\x03';
constexpr std::int64_t segundo = 1'000'000'000;
/// A sleep ends this much before its time, and the rest is spent looking.
constexpr std::int64_t margen = 60'000;

volatile std::sig_atomic_t fin = 0;

std::int64_t ahora() {
  timespec t{};
  clock_gettime(CLOCK_MONOTONIC, &t);
  return t.tv_sec * segundo + t.tv_nsec;
}

void esperar_hasta(std::int64_t cuando) {
  const std::int64_t sueno = cuando - margen;
  const timespec t{sueno / segundo, sueno % segundo};
  if (sueno > ahora()) clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &t, nullptr);
  while (ahora() < cuando) continue;
}

[[noreturn]] void fallar(const char* que) {
  std::perror(que);
  std::exit(1);
}

struct terminal {
  explicit terminal(const char* enlace) : maestro(posix_openpt(O_RDWR | O_NOCTTY)) {
    std::array<char, 128> nombre{};
    if (maestro < 0 || grantpt(maestro) != 0 || unlockpt(maestro) != 0 ||
        ptsname_r(maestro, nombre.data(), nombre.size()) != 0) {
      fallar("pseudo-terminal");
    }
    // Held open, since a terminal whose device nobody holds gives errors to its master.
    esclavo = open(nombre.data(), O_RDWR | O_NOCTTY);
    termios t{};
    if (esclavo < 0 || tcgetattr(esclavo, &t) != 0) fallar(nombre.data());
    cfmakeraw(&t);
    tcsetattr(esclavo, TCSANOW, &t);
    if (symlink(nombre.data(), enlace) != 0) fallar(enlace);
  }
  int maestro, esclavo = -1;
};

struct sello {
  char letra;
  std::int64_t desde_respuesta, desde_trama;
};

class cronista {
 public:
  cronista(int fd, unsigned baudios) : fd_(fd), caracter_(baudios == 0 ? 0 : 10 * segundo / baudios) {}

  /// Serves the line until the program is asked to end.
  void atender() {
    while (fin == 0) {
      std::array<char, 256> trozo;
      pollfd espera{fd_, POLLIN, 0};
      if (poll(&espera, 1, 200) <= 0) continue;
      const ssize_t n = read(fd_, trozo.data(), trozo.size());
      if (n <= 0) continue;
      if (trama_.empty()) anotar(ahora());
      trama_.append(trozo.data(), static_cast<std::size_t>(n));
      if (trama_.back() == ETX) responder();
    }
  }

  const std::vector<sello>& sellos() const { return sellos_; }

 private:
  void anotar(std::int64_t llegada) {
    sellos_.push_back({'?', llegada - ultimo_caracter_, llegada - llegada_});
    llegada_ = llegada;
  }

  void responder() {
    if (trama_.size() > 1) sellos_.back().letra = trama_[1];
    placa_.entra(trama_, puente::instante{0});
    const std::string respuesta = placa_.sale(puente::instante{0});
    std::int64_t cuando = llegada_ + static_cast<std::int64_t>(trama_.size()) * caracter_;
    trama_.clear();
    if (caracter_ == 0) {
      poner(respuesta);
    } else {
      for (const char& c : respuesta) {
        esperar_hasta(cuando += caracter_);
        poner({&c, 1});
      }
    }
    ultimo_caracter_ = ahora();
  }

  void poner(std::string_view datos) {
    if (write(fd_, datos.data(), datos.size()) != static_cast<ssize_t>(datos.size())) fallar("write");
  }

  const int fd_;
  const std::int64_t caracter_;
  puente::chip chip_;
  puente::placa placa_{chip_, puente::ritmo{0}};
  std::string trama_;
  std::int64_t llegada_ = 0, ultimo_caracter_ = 0;
  std::vector<sello> sellos_;
};

}  // namespace

int main(int cuantos, char** argumentos) {
  if (cuantos != 3) {
    std::fprintf(stderr, "cronista LINK BAUD\n");
    return 2;
  }
  // The kernel may otherwise lengthen each sleep by 50 µs, more than half a character at 115,200 baud.
  prctl(PR_SET_TIMERSLACK, 1UL);
  struct sigaction terminar {};
  terminar.sa_handler = [](int) { fin = 1; };
  sigaction(SIGTERM, &terminar, nullptr);
  const terminal t(argumentos[1]);
  cronista c(t.maestro, static_cast<unsigned>(std::atoi(argumentos[2])));
  c.atender();
  for (const sello& s : c.sellos()) {
    std::printf("%c %lld %lld\n", s.letra, static_cast<long long>(s.desde_respuesta),
                static_cast<long long>(s.desde_trama));
  }
}
