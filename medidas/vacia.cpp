// An empty Qt window of the size of the program's own, to compare its start with.
//
// Usage: vacia WIDTH HEIGHT

#include <QApplication>
#include <QMainWindow>
#include <cstdlib>

int main(int cuantos, char** argumentos) {
  QApplication aplicacion(cuantos, argumentos);
  if (cuantos < 3) return 2;
  QMainWindow ventana;
  ventana.setFixedSize(std::atoi(argumentos[1]), std::atoi(argumentos[2]));
  ventana.show();
  return QApplication::exec();
}
