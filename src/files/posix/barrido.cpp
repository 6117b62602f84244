#include "barrido.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <ctime>
#include <memory>

#include "provisionales.h"

namespace morvane {

namespace {

/// The own number may have been another's before: what this process is writing is not an hour old.
bool vive(std::int32_t pid) {
  return pid != ::getpid() && (::kill(pid, 0) == 0 || errno != ESRCH);
}

bool es_viejo(int carpeta, const char* nombre) {
  struct stat que {};
  if (::fstatat(carpeta, nombre, &que, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(que.st_mode)) return false;
  return que.st_mtime < std::time(nullptr) - edad_para_barrer;
}

}  // namespace

void barrer_provisionales(int carpeta) {
  const int propia = ::openat(carpeta, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (propia < 0) return;
  const std::unique_ptr<DIR, int (*)(DIR*)> lista(::fdopendir(propia), ::closedir);
  if (!lista) {
    ::close(propia);
    return;
  }
  while (const dirent* entrada = ::readdir(lista.get())) {
    const auto pid = dueno_del_provisional(entrada->d_name);
    if (pid && !vive(*pid) && es_viejo(carpeta, entrada->d_name)) ::unlinkat(carpeta, entrada->d_name, 0);
  }
}

}  // namespace morvane
