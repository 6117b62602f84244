#include <string>
#include <vector>

#include "console/exterior_real.h"
#include "console/programa.h"

int main(int argc, char** argv) {
  const std::vector<std::string> palabras(argv + (argc > 0 ? 1 : 0), argv + argc);
  const auto fuera = morvane::console::exterior_real();
  return morvane::console::correr(palabras, *fuera);
}
