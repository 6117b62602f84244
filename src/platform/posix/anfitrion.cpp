#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

#include "platform/anfitrion_posix.h"

namespace morvane {

namespace {

constexpr std::array carpetas = {"/usr/local/bin", "/usr/bin", "/bin"};
constexpr std::array programas = {"hardinfo2", "hardinfo", "kinfocenter", "gnome-system-monitor"};

/// Runs in the child that `iniciar` makes. The program becomes nobody's child, so that nobody has to wait for it.
[[noreturn]] void convertirse_en(const char* ruta) {
  const pid_t nieto = ::fork();
  if (nieto != 0) ::_exit(nieto > 0 ? 0 : 1);
  ::setsid();
  sigset_t ninguna;
  sigemptyset(&ninguna);
  ::sigprocmask(SIG_SETMASK, &ninguna, nullptr);
  std::signal(SIGPIPE, SIG_DFL);
  ::execl(ruta, ruta, static_cast<char*>(nullptr));
  ::_exit(127);
}

}  // namespace

std::optional<std::int32_t> anfitrion_posix::RegOpenKeyExA(std::int32_t /*raiz*/, const std::string& /*nombre*/,
                                                           std::uint32_t /*acceso*/) {
  return std::nullopt;
}

std::optional<valor_registro> anfitrion_posix::RegQueryValueExA(std::int32_t /*clave*/, const std::string& /*nombre*/,
                                                                std::size_t /*cabida*/) {
  return std::nullopt;
}

void anfitrion_posix::RegCloseKey(std::int32_t /*clave*/) {}

bool anfitrion_posix::existe(const std::string& ruta) {
  return ::access(ruta.c_str(), F_OK) == 0;
}

bool anfitrion_posix::iniciar(const std::string& ruta) {
  if (::access(ruta.c_str(), X_OK) != 0) return false;
  const pid_t hijo = ::fork();
  if (hijo < 0) return false;
  if (hijo == 0) convertirse_en(ruta.c_str());
  int estado = 0;
  return ::waitpid(hijo, &estado, 0) == hijo && WIFEXITED(estado) && WEXITSTATUS(estado) == 0;
}

std::vector<std::string> anfitrion_posix::programas_de_informacion() {
  std::vector<std::string> hallados;
  for (const char* programa : programas) {
    for (const char* carpeta : carpetas) {
      const std::string ruta = std::string(carpeta) + "/" + programa;
      if (::access(ruta.c_str(), X_OK) == 0) hallados.push_back(ruta);
    }
  }
  return hallados;
}

}  // namespace morvane
