#include <QApplication>
#include <chrono>
#include <cstdio>
#include <exception>

#include "pasos.h"

namespace {

int correr(const std::filesystem::path& directorio, const std::filesystem::path& fotos) {
  const auto inicio = std::chrono::steady_clock::now();
  std::filesystem::create_directories(fotos);
  morvane::preparar_aplicacion();
  morvane::testigo testigo(fotos);
  morvane::programa programa(directorio);
  morvane::recorrer(programa, testigo, directorio);
  const auto segundos = std::chrono::duration<double>(std::chrono::steady_clock::now() - inicio).count();
  std::printf("\nRecorrido terminado en %.0f s, faltas: %d\n", segundos, testigo.faltas());
  return testigo.faltas() == 0 ? 0 : 1;
}

}  // namespace

int main(int cuantos, char** argumentos) {
  if (cuantos < 3) {
    std::fprintf(stderr, "uso: recorrido DIRECTORIO_DEL_PROGRAMA DIRECTORIO_DE_FOTOS\n");
    return 64;
  }
  try {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
      qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication aplicacion(cuantos, argumentos);
    // The program works in its own directory from its start on.
    return correr(std::filesystem::canonical(argumentos[1]), std::filesystem::absolute(argumentos[2]));
  } catch (const std::exception& fallo) {
    std::fprintf(stderr, "recorrido: %s\n", fallo.what());
    return 1;
  }
}
