#include <sys/prctl.h>
#include <sys/signalfd.h>

#include <clocale>
#include <csignal>
#include <exception>
#include <iostream>
#include <optional>

#include "bridge/opciones.h"
#include "enlace.h"
#include "sesion.h"
#include "terminal.h"

namespace {

puente::descriptor senales_de_fin() {
  sigset_t cuales;
  sigemptyset(&cuales);
  for (const int s : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&cuales, s);
  sigprocmask(SIG_BLOCK, &cuales, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
  return puente::descriptor(puente::logrado(signalfd(-1, &cuales, SFD_CLOEXEC), "no se pueden atender las señales"));
}

/// The exit code of a run in which a trace was to be played and was not.
constexpr int otra_cosa = 3;

int servir(const puente::opciones& o) {
  const puente::descriptor senales = senales_de_fin();
  // The kernel may otherwise lengthen each sleep by 50 µs, a third of a character at 57,600 bits a second.
  prctl(PR_SET_TIMERSLACK, 1UL);
  puente::sesion s(o, *senales);
  {
    puente::terminal t;
    std::optional<puente::enlace> e;
    if (!o.enlace.empty()) e.emplace(o.enlace, t.nombre());
    std::cout << "puente: " << t.nombre() << (e ? " <- " + o.enlace : "")
              << (o.averia.empty() ? "" : "; avería: " + o.averia) << std::endl;
    s.atender(t);
  }
  s.guardar();
  if (s.queja().empty()) return 0;
  std::cerr << "puente: " << s.queja() << std::endl;
  return otra_cosa;
}

}  // namespace

int main(int argc, char** argv) {
  std::setlocale(LC_ALL, "");
  const auto [valores, error] = puente::leer_opciones(std::span<const char* const>(argv, argc).subspan(1));
  if (!error.empty()) {
    std::cerr << "puente: " << error << "\nPruebe con: puente --ayuda" << std::endl;
    return 2;
  }
  if (valores.ayuda) {
    std::cout << puente::texto_de_ayuda();
    return 0;
  }
  try {
    return servir(valores);
  } catch (const std::exception& e) {
    std::cerr << "puente: " << e.what() << std::endl;
    return 1;
  }
}
