#include "console/exterior_real.h"
#include "console/programa.h"

int main(int argc, char** argv) {
  const auto dichas = morvane::console::palabras(argc, argv);
  const auto fuera = morvane::console::exterior_real();
  return morvane::console::correr(dichas, *fuera);
}
