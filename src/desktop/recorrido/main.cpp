#include <QApplication>
#include <QPalette>
#include <chrono>
#include <cstdio>
#include <exception>
#include <string_view>

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

/// As dark desktops have it.
void oscurecer() {
  constexpr QRgb ventana = 0xFF2D2F33, base = 0xFF1E1F22, boton = 0xFF3A3D42, texto = 0xFFE6E6E6, apagado = 0xFF8A8A8A;
  QPalette paleta{QColor{boton}, QColor{ventana}};
  for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    paleta.setColor(papel, texto);
    paleta.setColor(QPalette::Disabled, papel, apagado);
  }
  paleta.setColor(QPalette::Base, base);
  paleta.setColor(QPalette::ToolTipBase, base);
  paleta.setColor(QPalette::Highlight, 0xFF2F6DB5);
  paleta.setColor(QPalette::HighlightedText, Qt::white);
  paleta.setColor(QPalette::Link, 0xFF7FB2F0);
  QApplication::setPalette(paleta);
}

}  // namespace

int main(int cuantos, char** argumentos) {
  if (cuantos < 3) {
    std::fprintf(stderr, "uso: recorrido DIRECTORIO_DEL_PROGRAMA DIRECTORIO_DE_FOTOS [oscuro]\n");
    return 64;
  }
  try {
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
      qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication aplicacion(cuantos, argumentos);
    if (cuantos > 3 && std::string_view(argumentos[3]) == "oscuro") oscurecer();
    // The program works in its own directory from its start on.
    return correr(std::filesystem::canonical(argumentos[1]), std::filesystem::absolute(argumentos[2]));
  } catch (const std::exception& fallo) {
    std::fprintf(stderr, "recorrido: %s\n", fallo.what());
    return 1;
  }
}
