#include "provisionales.h"

#include <charconv>

namespace morvane {

namespace {

constexpr std::string_view principio = ".morvane-", final = ".tmp";

}  // namespace

std::string nombre_provisional(std::int32_t pid, unsigned intento) {
  return std::string(principio) + std::to_string(pid) + "-" + std::to_string(intento) + std::string(final);
}

std::optional<std::int32_t> dueno_del_provisional(std::string_view nombre) {
  if (!nombre.starts_with(principio)) return std::nullopt;
  const char* const fin = nombre.data() + nombre.size();
  std::int32_t pid = 0;
  unsigned intento = 0;
  const auto [tras_pid, error] = std::from_chars(nombre.data() + principio.size(), fin, pid);
  if (error != std::errc() || pid <= 0 || tras_pid == fin || *tras_pid != '-') return std::nullopt;
  const auto [resto, otro_error] = std::from_chars(tras_pid + 1, fin, intento);
  if (otro_error != std::errc() || std::string_view(resto, static_cast<std::size_t>(fin - resto)) != final) {
    return std::nullopt;
  }
  return pid;
}

}  // namespace morvane
