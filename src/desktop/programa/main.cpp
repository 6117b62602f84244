#include <QApplication>
#include <QScreen>
#include <QTimer>
#include <atomic>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <thread>

#include "desktop/directorio.h"
#include "desktop/programa.h"
#include "platform/proceso.h"

namespace {

/// With a palette of 256 colours Qt paints nothing, and does not last long.
void comprobar_pantalla() {
  constexpr int minimo = 15;
  const QScreen* pantalla = QGuiApplication::primaryScreen();
  if (pantalla == nullptr || pantalla->depth() >= minimo) return;
  throw std::runtime_error("la pantalla tiene " + std::to_string(pantalla->depth()) + " bits por punto y hacen falta " +
                           std::to_string(minimo) + " o más");
}

int correr(QApplication& aplicacion, const morvane::peticiones_de_fin& avisos) {
  morvane::preparar_aplicacion();
  morvane::programa programa(morvane::directorio_aplicacion());
  // Later: a signal is told in a thread of its own, and the desktop waits for its call to return.
  QTimer despues;
  despues.setSingleShot(true);
  std::atomic<int> pedidas = 0;
  QObject::connect(&despues, &QTimer::timeout, &despues, [&] {
    for (int n = pedidas.exchange(0); n > 0; --n) programa.pedir_fin();
  });
  const auto pedir = [&] {
    ++pedidas;
    QMetaObject::invokeMethod(&despues, "start", Qt::QueuedConnection);
  };
  QObject::connect(&aplicacion, &QGuiApplication::commitDataRequest, &despues, pedir);
  const std::jthread oyente = avisos.escuchar(pedir);
  programa.empezar();
  return QApplication::exec();
}

}  // namespace

int main(int cuantos, char** argumentos) {
  try {
    const morvane::peticiones_de_fin avisos;
    // The program takes no command line; Qt gets its name alone.
    int uno = cuantos > 0 ? 1 : 0;
    QApplication aplicacion(uno, argumentos);
    comprobar_pantalla();
    return correr(aplicacion, avisos);
  } catch (const std::exception& fallo) {
    std::fprintf(stderr, "morvane: %s\n", fallo.what());
    return 1;
  }
}
