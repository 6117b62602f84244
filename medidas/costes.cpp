// What the window's commands cost on the wire, in characters both ways, on a board without faults.
//
// Usage: costes FILE   loads it, programs it, and so on; prints a line for each command, its name and its characters

#include <cstdio>
#include <functional>
#include <string>

#include "apoyo/carpeta.h"
#include "bridge/placa.h"
#include "plataforma_muda.h"
#include "shell/frm_principal.h"
#include "shell/ordenes.h"
#include "shell/proyecto.h"

using namespace morvane;

namespace {

/// The board answers at once; what passes is counted.
class linea_contada final : public transporte {
 public:
  bool existe(int /*numero*/) override { return true; }
  bool abrir(int /*numero*/, const parametros_linea& /*linea*/) override { return true; }
  void escribir(std::string_view datos) override {
    caracteres += static_cast<long long>(datos.size());
    placa_.entra(datos, puente::instante{0});
  }
  std::size_t leer(std::span<char> destino) override {
    const std::string datos = placa_.sale(puente::instante{0}, destino.size());
    caracteres += static_cast<long long>(datos.size());
    return datos.copy(destino.data(), destino.size());
  }
  bool perdido() const override { return false; }
  void cerrar() override {}
  void descartar_salida() override {}

  long long caracteres = 0;

 private:
  puente::chip chip_;
  puente::placa placa_{chip_, puente::ritmo{0}};
};

struct banco {
  banco() {
    dir.escribir("unidades/c/Datos/TORVAX-m68k/memoria.txt", "");
    dir.escribir("SETTINGS.TXT", "\"57600\",\"n\",\"8\",\"1\"\r\n\"COM1\"\r\n");
    Form_Load(f);
  }
  void contar(const char* nombre, const std::function<void()>& orden) {
    linea.caracteres = 0;
    orden();
    std::printf("%s %lld\n", nombre, linea.caracteres);
  }

  apoyo::carpeta dir;
  archivos ficheros{dir.ruta()};
  medidas::plataforma_muda plat;
  linea_contada linea;
  Variables_grab v;
  frm_principal f{plat, ficheros, linea, v};
};

}  // namespace

int main(int cuantos, char** argumentos) {
  if (cuantos != 2) {
    std::fprintf(stderr, "costes FILE\n");
    return 2;
  }
  banco b;
  abrir_soltado(b.f, argumentos[1]);
  b.contar("grabar", [&] { men_prog_t_Click(b.f); });
  b.contar("sumas", [&] { mn_verifi_t_f_Click(b.f); });
  b.contar("bytes", [&] { men_verifi_t_Click(b.f); });
  b.contar("leer", [&] { men_leer_ft_Click(b.f); });
  return b.v.dir_max == 0 ? 1 : 0;
}
