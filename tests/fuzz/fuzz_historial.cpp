// A list of files of any content, two programs that enter files of any name, and scraps that a crash may leave: the
// list never has a gap or more than ten files, and a program that starts then has the same list.

#include <fuzzer/FuzzedDataProvider.h>

#include "files/texto.h"
#include "fuzz/mesa.h"
#include "shell/historial.h"

using namespace morvane;

namespace {

struct programa {
  explicit programa(apoyo::mesa& m) : f(m.plat, m.ficheros, m.linea, v) {
    f.link.valores.ruta_aplicacion = m.ficheros.ruta_aplicacion();
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
  apoyo::mesa m;
  FuzzedDataProvider entrada(datos, largo);
  m.dir.escribir("MENU.TXT", entrada.ConsumeRandomLengthString(4096));
  programa a(m), b(m);
  mirar(a);
  for (int i = 0; i < 24 && entrada.remaining_bytes() > 0; ++i) {
    const auto que = entrada.ConsumeIntegral<std::uint8_t>();
    const std::string ruta = entrada.ConsumeRandomLengthString(300);
    if (que % 4 == 0) {
      std::ofstream(m.dir.ruta() / "MENU.TXT", std::ios::app) << "\r\n" << ruta;
      continue;
    }
    programa& p = que % 4 == 1 ? a : b;
    actualizar_historial(p.f, ruta);
    mirar(p);
    const bool cabe =
        !ruta.empty() && en_utf8(ruta) == ruta && ruta.find_first_of(std::string("\"\r\n\0", 4)) == std::string::npos;
    if (!cabe) continue;
    const auto lista = p.lista();
    apoyo::exigir(std::ranges::find(lista, ruta) != lista.end(), "what was entered is in the list");
    const programa nuevo(m);
    mirar(nuevo);
    apoyo::exigir(nuevo.lista() == lista, "a program that starts now has the same list");
  }
  apoyo::exigir(m.plat.cajas.empty(), "no box");
  return 0;
}
