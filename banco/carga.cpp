// Loading of S-record files.
//
// Usage: carga FILE          loads it once, as a whole process for others to be compared with; prints the most memory
//                            that it has held, in KiB
//        carga FILE TIMES    loads it, and reads it and finds its line ends, in turns; prints both times in nanoseconds

#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include "image/cargar_s19.h"
#include "plataforma_muda.h"

using namespace morvane;

namespace {

std::int64_t nanosegundos() {
  return std::chrono::steady_clock::now().time_since_epoch() / std::chrono::nanoseconds{1};
}

struct cargador {
  explicit cargador(const char* ruta) { v.ruta_archivo = ruta; }
  void cargar() {
    cargar_s19(plat, v, a);
    if (plat.ultima == caja{"", "Ha terminado de cargar el archivo"}) return;
    std::fprintf(stderr, "carga: %s\n", plat.ultima.texto.c_str());
    std::exit(1);
  }

  banco::plataforma_muda plat;
  contador_cambios cambios;
  avance a{cambios};
  Variables_grab v;
};

/// The lines of a file, counted with nothing but `read` and `memchr`.
std::size_t contar_lineas(const char* ruta, std::vector<char>& bloque) {
  std::size_t lineas = 0;
  const int fd = open(ruta, O_RDONLY | O_CLOEXEC);
  for (ssize_t n; (n = read(fd, bloque.data(), bloque.size())) > 0;) {
    const char* donde = bloque.data();
    const char* const fin = donde + n;
    for (; (donde = static_cast<const char*>(std::memchr(donde, '\r', static_cast<std::size_t>(fin - donde))));
         ++donde) {
      ++lineas;
    }
  }
  close(fd);
  return lineas;
}

void anotar_memoria() {
  std::ifstream estado("/proc/self/status");
  for (std::string linea; std::getline(estado, linea);) {
    if (linea.starts_with("VmHWM:")) std::printf("%d\n", std::atoi(linea.c_str() + 6));
  }
}

void por_turnos(cargador& c, const char* ruta, int veces) {
  std::vector<char> bloque(std::size_t{64} * 1024);
  for (int i = 0; i < veces; ++i) {
    const std::int64_t t0 = nanosegundos();
    c.cargar();
    const std::int64_t t1 = nanosegundos();
    const std::size_t lineas = contar_lineas(ruta, bloque);
    const std::int64_t t2 = nanosegundos();
    if (lineas == 0) std::exit(1);
    std::printf("%lld %lld\n", static_cast<long long>(t1 - t0), static_cast<long long>(t2 - t1));
  }
}

}  // namespace

int main(int cuantos, char** argumentos) {
  if (cuantos < 2) {
    std::fprintf(stderr, "carga FILE [TIMES]\n");
    return 2;
  }
  cargador c(argumentos[1]);
  if (cuantos == 2) {
    c.cargar();
    anotar_memoria();
  } else {
    por_turnos(c, argumentos[1], std::atoi(argumentos[2]));
  }
}
