#include "ocupantes_tty.h"

#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <vector>

namespace morvane {

namespace fs = std::filesystem;

namespace {

/// More names than this help nobody.
constexpr std::size_t maximo = 3;

/// How the kernel's list of locks names a file.
std::string nombre_en_cerrojos(const fs::path& ruta) {
  struct stat que {};
  if (::stat(ruta.c_str(), &que) != 0) return {};
  std::array<char, 64> nombre{};
  std::snprintf(nombre.data(), nombre.size(), "%02x:%02x:%llu", major(que.st_dev), minor(que.st_dev),
                static_cast<unsigned long long>(que.st_ino));
  return nombre.data();
}

/// Who holds a lock of flock(2) on the file; empty if nobody does.
std::string dueno_del_cerrojo(const fs::path& ruta) {
  const std::string buscado = nombre_en_cerrojos(ruta);
  std::ifstream lista("/proc/locks");
  std::string numero, clase, modo, acceso, pid, fichero, resto;
  while (lista >> numero >> clase >> modo >> acceso >> pid >> fichero && std::getline(lista, resto)) {
    if (clase == "FLOCK" && fichero == buscado) return pid;
  }
  return {};
}

/// By the names behind the descriptors alone: to follow them could hang on a dead network.
bool tiene_abierto(const fs::path& proceso, const fs::path& ruta) {
  std::error_code error;
  for (fs::directory_iterator fd(proceso / "fd", error), fin; !error && fd != fin; fd.increment(error)) {
    std::error_code cerrado;
    if (fs::read_symlink(fd->path(), cerrado) == ruta) return true;
  }
  return false;
}

std::vector<std::string> quienes_lo_tienen(const fs::path& ruta) {
  std::vector<std::string> pids;
  std::error_code error;
  for (fs::directory_iterator uno("/proc", error), fin; !error && uno != fin; uno.increment(error)) {
    const std::string pid = uno->path().filename().string();
    const bool proceso = pid.find_first_not_of("0123456789") == std::string::npos;
    if (!proceso || pid == std::to_string(::getpid()) || !tiene_abierto(uno->path(), ruta)) continue;
    pids.push_back(pid);
    if (pids.size() == maximo) break;
  }
  return pids;
}

std::string describir(const std::string& pid) {
  std::ifstream fichero("/proc/" + pid + "/comm");
  std::string nombre;
  return std::getline(fichero, nombre) ? nombre + " (pid " + pid + ")" : std::string();
}

}  // namespace

std::vector<std::string> programas_con(const fs::path& ruta) {
  std::vector<std::string> pids = quienes_lo_tienen(ruta), todos;
  const std::string dueno = dueno_del_cerrojo(ruta);
  if (!dueno.empty() && dueno != std::to_string(::getpid())) {
    std::erase(pids, dueno);
    pids.insert(pids.begin(), dueno);
  }
  for (const std::string& pid : pids) {
    if (std::string uno = describir(pid); !uno.empty()) todos.push_back(std::move(uno));
  }
  return todos;
}

std::string ocupantes(const fs::path& ruta) {
  if (std::string dueno = describir(dueno_del_cerrojo(ruta)); !dueno.empty()) return dueno;
  std::string todos;
  for (const std::string& uno : programas_con(ruta)) todos += (todos.empty() ? "" : ", ") + uno;
  return todos;
}

}  // namespace morvane
