#pragma once

#include <QApplication>

/// The one QApplication of the test program, made when a test first needs it.
inline QApplication& aplicacion() {
  static int cuantos = 1;
  static char nombre[] = "prueba";
  static char* argumentos[] = {nombre, nullptr};
  static auto* unica = new QApplication(cuantos, argumentos);
  return *unica;
}
