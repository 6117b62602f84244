#include "console/traza.h"

#include <array>
#include <cerrno>

#include "abrir_para_escribir.h"
#include "files/texto.h"

namespace morvane::console {

namespace {

constexpr char stx = '\x02', etx = '\x03';

std::string visible(char c) {
  if (c == stx) return "<STX>";
  if (c == etx) return "<ETX>";
  if (c >= ' ' && c <= '~' && c != '<') return std::string(1, c);
  return "<" + hex(static_cast<unsigned char>(c), 2) + ">";
}

}  // namespace

std::string renglon_de_traza(char direccion, std::string_view crudo, job::tiempo cuando) {
  constexpr long long por_segundo = 1'000'000;
  std::array<char, 40> tiempo{};
  const long long us = cuando.count();
  std::snprintf(tiempo.data(), tiempo.size(), "%6lld.%06lld %c ", us / por_segundo, us % por_segundo, direccion);
  std::string renglon = tiempo.data();
  for (const char c : crudo) renglon += visible(c);
  return renglon;
}

traza::traza(const std::filesystem::path& ruta) : fichero_(abrir_para_escribir(ruta)) {
  if (!fichero_) fallo_ = causa_de_escritura(errno);
}

void traza::anotar(char direccion, std::string_view crudo, job::tiempo cuando) {
  if (fallo_) return;
  if (!inicio_) inicio_ = cuando;
  const std::string renglon = renglon_de_traza(direccion, crudo, cuando - *inicio_) + "\n";
  const bool bien = std::fputs(renglon.c_str(), fichero_.get()) >= 0 && std::fflush(fichero_.get()) == 0;
  if (!bien) fallo_ = causa_de_escritura(errno);
}

}  // namespace morvane::console
