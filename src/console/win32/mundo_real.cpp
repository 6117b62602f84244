#include "mundo_real.h"

#include <algorithm>
#include <array>
#include <chrono>

namespace morvane::console {

namespace {

/// Rounded up: a wait that is too short would be spent looking.
DWORD en_milisegundos(job::tiempo t) {
  return static_cast<DWORD>(std::clamp<std::int64_t>((t.count() + 999) / 1000, 0, 60'000));
}

}  // namespace

job::tiempo mundo_real::ahora() {
  return std::chrono::duration_cast<job::tiempo>(std::chrono::steady_clock::now().time_since_epoch());
}

void mundo_real::esperar(job::tiempo hasta_cuanto) {
  void* venida = linea != nullptr ? linea->aviso() : nullptr;
  std::array<HANDLE, 2> cuales{};
  DWORD cuantos = 0;
  if (venida != nullptr) cuales.at(cuantos++) = venida;
  // Once raised it stays so.
  if (paran_.nivel() == 0) cuales.at(cuantos++) = paran_.aviso();
  constexpr DWORD sin_aviso = 1;
  if (cuantos == 0 || venida == nullptr) return ::Sleep(std::min(en_milisegundos(hasta_cuanto), sin_aviso));
  (void)::WaitForMultipleObjects(cuantos, cuales.data(), FALSE, en_milisegundos(hasta_cuanto));
}

void mundo_real::pausa(job::tiempo cuanto) {
  const job::tiempo fin = ahora() + cuanto;
  constexpr job::tiempo trozo{20'000};
  for (job::tiempo ya = ahora(); ya < fin && parada() < 2; ya = ahora())
    ::Sleep(en_milisegundos(std::min(fin - ya, trozo)));
}

}  // namespace morvane::console
