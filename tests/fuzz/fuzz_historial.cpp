// A list of files of any content, two programs that enter files of any name, and scraps that a crash may leave: the
// list never has a gap or more than ten files, and a program that starts then has the same list.

#include <fuzzer/FuzzedDataProvider.h>

#include <memory>

#include "apoyo/carpeta.h"
#include "apoyo/guion.h"
#include "fuzz/exigir.h"
#include "platform/gemelo.h"
#include "shell/historial.h"

using namespace morvane;

namespace {

constexpr std::size_t mayor = 300;

struct programa {
  programa(gemelo& plat, archivos& ficheros, transporte& linea) : f(plat, ficheros, linea, v) {
    f.link.valores.ruta_aplicacion = ficheros.ruta_aplicacion();
    leer_historial(f);
  }
  std::vector<std::string> lista() const { return {f.historial.begin(), f.historial.begin() + 11}; }

  static inline Variables_grab v;
  frm_principal f;
};

void mirar(const programa& p) {
  const auto lista = p.lista();
  apoyo::exigir(lista[0].empty(), "slot 0 is never used");
  for (std::size_t i = 1; i <= 10; ++i) {
    apoyo::exigir(i == 1 || lista[i].empty() || !lista[i - 1].empty(), "no gap");
    apoyo::exigir(p.f.menu.men_dir[i - 1].Visible == !lista[i].empty(), "the menu shows the list");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  static apoyo::carpeta dir;
  FuzzedDataProvider entrada(datos, largo);
  dir.escribir("MENU.TXT", entrada.ConsumeRandomLengthString(4096));
  archivos ficheros(dir.ruta());
  gemelo plat;
  apoyo::guion lejos;
  transporte_memoria linea(plat, lejos);
  programa a(plat, ficheros, linea), b(plat, ficheros, linea);
  mirar(a);
  for (int i = 0; i < 24 && entrada.remaining_bytes() > 0; ++i) {
    const auto que = entrada.ConsumeIntegral<std::uint8_t>();
    const std::string ruta = entrada.ConsumeRandomLengthString(mayor);
    if (que % 4 == 0) {
      std::ofstream(dir.ruta() / "MENU.TXT", std::ios::app) << "\r\n" << ruta;
      continue;
    }
    programa& p = que % 4 == 1 ? a : b;
    actualizar_historial(p.f, ruta);
    mirar(p);
    const bool cabe = !ruta.empty() && ruta.find_first_of(std::string("\"\r\n\0", 4)) == std::string::npos;
    if (!cabe) continue;
    const auto lista = p.lista();
    apoyo::exigir(std::ranges::find(lista, ruta) != lista.end(), "what was entered is in the list");
    const programa nuevo(plat, ficheros, linea);
    mirar(nuevo);
    apoyo::exigir(nuevo.lista() == lista, "a program that starts now has the same list");
  }
  apoyo::exigir(plat.cajas.empty(), "no box");
  return 0;
}
