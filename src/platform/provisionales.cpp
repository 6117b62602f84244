#include "provisionales.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <ctime>
#include <memory>
#include <optional>
#include <string_view>

namespace morvane {

namespace {

constexpr std::string_view principio = ".morvane-", final = ".tmp";
constexpr std::time_t edad_minima = 3600;

/// The process that a file of this name belongs to, if it is one of ours.
std::optional<pid_t> dueno(std::string_view nombre) {
  if (!nombre.starts_with(principio)) return std::nullopt;
  const char* const fin = nombre.data() + nombre.size();
  pid_t pid = 0;
  unsigned intento = 0;
  const auto [tras_pid, error] = std::from_chars(nombre.data() + principio.size(), fin, pid);
  if (error != std::errc() || pid <= 0 || tras_pid == fin || *tras_pid != '-') return std::nullopt;
  const auto [resto, otro_error] = std::from_chars(tras_pid + 1, fin, intento);
  if (otro_error != std::errc() || std::string_view(resto, static_cast<std::size_t>(fin - resto)) != final) {
    return std::nullopt;
  }
  return pid;
}

/// The own number may have been another's before: what this process is writing is not an hour old.
bool vive(pid_t pid) {
  return pid != ::getpid() && (::kill(pid, 0) == 0 || errno != ESRCH);
}

bool es_viejo(int carpeta, const char* nombre) {
  struct stat que {};
  if (::fstatat(carpeta, nombre, &que, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(que.st_mode)) return false;
  return que.st_mtime < std::time(nullptr) - edad_minima;
}

}  // namespace

std::string nombre_provisional(pid_t pid, unsigned intento) {
  return std::string(principio) + std::to_string(pid) + "-" + std::to_string(intento) + std::string(final);
}

void barrer_provisionales(int carpeta) {
  const int propia = ::openat(carpeta, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (propia < 0) return;
  const std::unique_ptr<DIR, int (*)(DIR*)> lista(::fdopendir(propia), ::closedir);
  if (!lista) {
    ::close(propia);
    return;
  }
  while (const dirent* entrada = ::readdir(lista.get())) {
    const auto pid = dueno(entrada->d_name);
    if (pid && !vive(*pid) && es_viejo(carpeta, entrada->d_name)) ::unlinkat(carpeta, entrada->d_name, 0);
  }
}

}  // namespace morvane
