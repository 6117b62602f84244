#include <dlfcn.h>

#include <QApplication>
#include <QTimer>
#include <csignal>
#include <cstdio>
#include <exception>
#include <thread>

#include "desktop/directorio.h"
#include "desktop/programa.h"
#include "senales.h"

namespace {

/// The font configuration is read when the first text needs it, and that takes as long as the rest of the start. Qt's
/// library for it reads it once for the whole process, so another processor can do that while this one connects to the
/// desktop. Where there is no such library nothing happens.
void leer_fuentes() {
  using lectura = int (*)();
  if (const auto leer = reinterpret_cast<lectura>(dlsym(RTLD_DEFAULT, "FcInit"))) leer();
}

int correr(QApplication& aplicacion, morvane::senales& avisos) {
  morvane::preparar_aplicacion();
  morvane::programa programa(morvane::directorio_aplicacion());
  avisos.escuchar([&programa] { programa.pedir_fin(); });
  // Later, since the desktop waits for its call to return.
  QTimer despues;
  despues.setSingleShot(true);
  QObject::connect(&despues, &QTimer::timeout, &despues, [&programa] { programa.pedir_fin(); });
  QObject::connect(&aplicacion, &QGuiApplication::commitDataRequest, &despues, [&despues] { despues.start(0); });
  programa.empezar();
  return QApplication::exec();
}

}  // namespace

int main(int cuantos, char** argumentos) {
  try {
    // What reads the messages of this program may be gone by the time they are written.
    std::signal(SIGPIPE, SIG_IGN);
    morvane::senales avisos;
    const std::jthread fuentes(leer_fuentes);
    // The program takes no command line; Qt gets its name alone.
    int uno = cuantos > 0 ? 1 : 0;
    QApplication aplicacion(uno, argumentos);
    return correr(aplicacion, avisos);
  } catch (const std::exception& fallo) {
    std::fprintf(stderr, "morvane: %s\n", fallo.what());
    return 1;
  }
}
