#include "senales.h"

#include <algorithm>
#include <atomic>
#include <csignal>

#include "platform/manejador.h"

namespace morvane::console {

namespace {

/// The host calls a plain function, in a thread of its own.
struct lo_venido {
  manejador aviso{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  std::atomic<int> nivel = 0, primera = 0;
};

lo_venido& venido() {
  static lo_venido v;
  return v;
}

BOOL WINAPI atender(DWORD cual) {
  const bool termina = cual != CTRL_C_EVENT && cual != CTRL_BREAK_EVENT;
  int ninguna = 0;
  venido().primera.compare_exchange_strong(ninguna, termina ? SIGTERM : SIGINT);
  ++venido().nivel;
  ::SetEvent(venido().aviso.numero());
  // The host ends the program as soon as this returns; it ends by itself when the chip is closed.
  if (termina) ::Sleep(INFINITE);
  return TRUE;
}

}  // namespace

senales::senales() {
  (void)venido();
  ::SetConsoleCtrlHandler(atender, TRUE);
}

senales::~senales() {
  ::SetConsoleCtrlHandler(atender, FALSE);
}

int senales::nivel() const {
  return std::min(venido().nivel.load(), 2);
}

int senales::primera() const {
  return venido().primera.load();
}

HANDLE senales::aviso() const {
  return venido().aviso.numero();
}

}  // namespace morvane::console
