// An ELF file of any content gives the image that a plain reading of its segments gives, or none at all.

#include "console/firmware.h"
#include "fuzz/mesa.h"

using namespace morvane;

namespace {

struct llano {
  std::string_view texto;

  bool de_64() const { return texto[4] == 2; }
  bool al_reves() const { return texto[5] == 1; }
  std::size_t campo(std::size_t donde, std::size_t bytes) const {
    std::size_t valor = 0;
    for (std::size_t i = 0; i < bytes; ++i) {
      valor = valor << 8 | static_cast<std::uint8_t>(texto[donde + (al_reves() ? bytes - 1 - i : i)]);
    }
    return valor;
  }
  /// Where a field of the size of an address stands, in a file of 32 bits and in one of 64.
  std::size_t grande(std::size_t en_32, std::size_t en_64) const { return de_64() ? campo(en_64, 8) : campo(en_32, 4); }

  void segmento(Variables_grab& v, std::size_t s) const {
    if (campo(s, 4) != 1) return;
    const std::size_t desde = grande(s + 4, s + 8), dir = grande(s + 12, s + 24), cuantos = grande(s + 16, s + 32);
    for (std::size_t i = 0; i < cuantos; ++i) {
      apoyo::exigir(dir + i < total_flash && desde + i < texto.size(), "it goes beyond file or flash");
      poner_byte(v, static_cast<std::int32_t>(dir + i), static_cast<std::uint8_t>(texto[desde + i]));
    }
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  static const apoyo::carpeta dir;
  const std::string texto(reinterpret_cast<const char*>(datos), largo);
  const auto leido = console::leer_firmware(dir.escribir("f.elf", texto));
  const auto* f = std::get_if<console::firmware>(&leido);
  if (f == nullptr) {
    apoyo::exigir(!console::frase(std::get<console::fallo_firmware>(leido)).empty(), "a reason");
    return 0;
  }
  const llano e{texto};
  const std::size_t cuantos = e.campo(e.de_64() ? 56 : 44, 2);
  if (cuantos == 0xFFFF) return 0;
  Variables_grab esperada;
  limpiar_buffer_salida(esperada);
  for (std::size_t i = 0; i < cuantos; ++i) e.segmento(esperada, e.grande(28, 32) + i * (e.de_64() ? 56 : 32));
  apoyo::exigir(f->v.mascara_salida == esperada.mascara_salida, "marks");
  apoyo::exigir(f->v.buffer_salida == esperada.buffer_salida && f->v.dir_max == esperada.dir_max, "image");
  return 0;
}
