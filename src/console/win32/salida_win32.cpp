#include "salida_win32.h"

#include <algorithm>
#include <cstdlib>

namespace morvane::console {

salida_win32::salida_win32(DWORD cual) : adonde_(::GetStdHandle(cual)) {
  DWORD modo = 0;
  terminal = ::GetConsoleMode(adonde_, &modo) != 0;
  if (!terminal) return;
  ::SetConsoleOutputCP(CP_UTF8);
  const char* no = std::getenv("NO_COLOR");
  const bool pinta = ::SetConsoleMode(adonde_, modo | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
  color = pinta && (no == nullptr || *no == '\0');
  CONSOLE_SCREEN_BUFFER_INFO que{};
  constexpr int ancho_minimo = 20;
  if (::GetConsoleScreenBufferInfo(adonde_, &que) == 0) return;
  const int hay = que.srWindow.Right - que.srWindow.Left + 1;
  if (hay >= ancho_minimo) ancho = hay;
}

void salida_win32::escribir(std::string_view texto) {
  while (!fallida_ && !texto.empty()) {
    DWORD hechos = 0;
    constexpr std::size_t trozo = 4096;
    const auto cuantos = static_cast<DWORD>(std::min(texto.size(), trozo));
    if (::WriteFile(adonde_, texto.data(), cuantos, &hechos, nullptr) == 0 || hechos == 0) {
      fallida_ = true;
    } else {
      texto.remove_prefix(hechos);
    }
  }
}

}  // namespace morvane::console
