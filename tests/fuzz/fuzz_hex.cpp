// An Intel HEX file of any content gives the image that a plain reading of its lines gives, or none at all.

#include "fuzz/registros.h"

using namespace morvane;

namespace {

/// A plain reader: what has been read so far.
struct llano {
  Variables_grab v;
  std::int64_t base = 0;
  bool segmentado = false, acabado = false, hay = false;

  /// False if the line cannot be part of a file that loads.
  bool linea(const std::string& entera) {
    const std::string texto(sin_blancos(entera));
    if (!texto.starts_with(':')) return true;
    const auto todos = apoyo::octetos(texto, 1);
    if (!todos || todos->size() < 5 || (*todos)[0] + std::size_t{5} != todos->size()) return false;
    if (std::accumulate(todos->begin(), todos->end(), 0) % 256 != 0) return false;
    if (acabado) return true;
    const auto& o = *todos;
    const bool par = o[0] == 2;
    if (o[3] == 2 && par) base = std::int64_t{o[4] * 256 + o[5]} * 16, segmentado = true;
    if (o[3] == 4 && par) base = std::int64_t{o[4] * 256 + o[5]} * 65'536, segmentado = false;
    acabado = o[3] == 1;
    const int debe[] = {o[0], 0, 2, 4, 2, 4};
    return o[3] < 6 && o[0] == debe[o[3]] && (o[3] != 0 || datos(o));
  }

 private:
  bool datos(const std::vector<int>& o) {
    for (int i = 0; i < o[0]; ++i) {
      const int lejos = o[1] * 256 + o[2] + i;
      const std::int64_t dir = base + (segmentado ? lejos % 65'536 : lejos);
      if (dir >= total_flash) return false;
      poner_byte(v, static_cast<std::int32_t>(dir), static_cast<std::uint8_t>(o[static_cast<std::size_t>(i) + 4]));
      hay = true;
    }
    return true;
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  static const apoyo::carpeta dir;
  const std::string texto = apoyo::registros_de(datos, largo, 1, 5, 0);
  const auto leido = console::leer_firmware(dir.escribir("f.hex", texto));
  const auto* f = std::get_if<console::firmware>(&leido);

  llano esperado;
  limpiar_buffer_salida(esperado.v);
  const std::string marca = "\xEF\xBB\xBF";
  const auto lineas = apoyo::lineas_de(texto.starts_with(marca) ? texto.substr(marca.size()) : texto, "\r\n");
  const bool buena = std::ranges::all_of(lineas, [&](const auto& linea) { return esperado.linea(linea); });
  apoyo::exigir((f != nullptr) == (buena && esperado.hay), "it tells the truth");
  if (f == nullptr) return 0;
  apoyo::exigir(f->v.mascara_salida == esperado.v.mascara_salida, "marks");
  apoyo::exigir(f->v.buffer_salida == esperado.v.buffer_salida && f->v.dir_max == esperado.v.dir_max, "image");
  return 0;
}
