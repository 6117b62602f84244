// Loading of S-record files.
//
// Usage: carga FILE   loads it once, as a whole process for others to be compared with; prints the most memory that it
//                     has held, in KiB

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "frases/frases.h"
#include "image/cargar_s19.h"
#include "plataforma_muda.h"

using namespace morvane;

namespace {

struct cargador {
  explicit cargador(const char* ruta) { v.ruta_archivo = ruta; }
  void cargar() {
    const auto fallo = cargar_s19(plat, v, a);
    if (!fallo) return;
    std::fprintf(stderr, "carga: %s\n", frase(*fallo).c_str());
    std::exit(1);
  }

  medidas::plataforma_muda plat;
  contador_cambios cambios;
  avance a{cambios};
  Variables_grab v;
};

void anotar_memoria() {
  std::ifstream estado("/proc/self/status");
  for (std::string linea; std::getline(estado, linea);) {
    if (linea.starts_with("VmHWM:")) std::printf("%d\n", std::atoi(linea.c_str() + 6));
  }
}

}  // namespace

int main(int cuantos, char** argumentos) {
  if (cuantos != 2) {
    std::fprintf(stderr, "carga FILE\n");
    return 2;
  }
  cargador(argumentos[1]).cargar();
  anotar_memoria();
}
