#include "mundo_real.h"

#include <poll.h>

#include <algorithm>
#include <array>

namespace morvane::console {

namespace {

timespec como_timespec(job::tiempo t) {
  constexpr std::int64_t por_segundo = 1'000'000, en_nanos = 1'000;
  const std::int64_t us = std::max<std::int64_t>(t.count(), 0);
  return {us / por_segundo, us % por_segundo * en_nanos};
}

}  // namespace

job::tiempo mundo_real::ahora() {
  return std::chrono::duration_cast<job::tiempo>(std::chrono::steady_clock::now().time_since_epoch());
}

void mundo_real::esperar(job::tiempo hasta_cuanto) {
  std::array<pollfd, 2> p{{{linea, POLLIN, 0}, {paran_.fd(), POLLIN, 0}}};
  const timespec limite = como_timespec(hasta_cuanto);
  (void)::ppoll(p.data(), p.size(), &limite, nullptr);
}

void mundo_real::pausa(job::tiempo cuanto) {
  const job::tiempo fin = ahora() + cuanto;
  for (job::tiempo ya = ahora(); ya < fin && parada() < 2; ya = ahora()) {
    pollfd p{paran_.fd(), POLLIN, 0};
    const timespec limite = como_timespec(fin - ya);
    (void)::ppoll(&p, 1, &limite, nullptr);
  }
}

int mundo_real::parada() {
  paran_.mirar();
  return paran_.nivel();
}

}  // namespace morvane::console
