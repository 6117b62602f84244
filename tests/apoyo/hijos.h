#pragma once

#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>

namespace apoyo {

/// While it lives no file can be written beyond `bytes`, as on a full disk.
class disco_lleno {
 public:
  explicit disco_lleno(rlim_t bytes) {
    std::signal(SIGXFSZ, SIG_IGN);
    ::getrlimit(RLIMIT_FSIZE, &antes_);
    const rlimit tope{bytes, antes_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &tope);
  }
  ~disco_lleno() { ::setrlimit(RLIMIT_FSIZE, &antes_); }
  disco_lleno(const disco_lleno&) = delete;
  disco_lleno& operator=(const disco_lleno&) = delete;

 private:
  rlimit antes_{};
};

/// Starts `trabajo` in a process of its own, which ends behind it without clearing anything up.
inline pid_t en_un_hijo(const std::function<void()>& trabajo) {
  const pid_t hijo = ::fork();
  if (hijo != 0) return hijo;
  [&]() noexcept { trabajo(); }();
  ::_exit(0);
}

enum class fin_hijo { muerto, terminado, prohibido };

/// Runs `trabajo` in a process of its own, which is killed as it enters its `n`-th system call, counted from 0; that
/// call is not made. `terminado` if it makes no more calls than that; `prohibido` where nobody may trace.
inline fin_hijo matar_en(int n, const std::function<void()>& trabajo) {
  const pid_t hijo = en_un_hijo([&] {
    if (::ptrace(PTRACE_TRACEME, 0, 0, 0) != 0) ::_exit(1);
    ::raise(SIGSTOP);
    trabajo();
  });
  int estado = 0;
  ::waitpid(hijo, &estado, 0);
  if (!WIFSTOPPED(estado)) return fin_hijo::prohibido;
  ::ptrace(PTRACE_SETOPTIONS, hijo, 0, PTRACE_O_EXITKILL);
  // Each call stops it twice.
  for (int parada = 0; parada <= 2 * n; ++parada) {
    ::ptrace(PTRACE_SYSCALL, hijo, 0, 0);
    ::waitpid(hijo, &estado, 0);
    if (!WIFSTOPPED(estado)) return fin_hijo::terminado;
  }
  ::kill(hijo, SIGKILL);
  ::waitpid(hijo, &estado, 0);
  return fin_hijo::muerto;
}

}  // namespace apoyo
