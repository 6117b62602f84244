// A binary file of any content gives its bytes with two dots for each line end, or none at all.

#include "fuzz/mesa.h"
#include "image/cargar_bin.h"

using namespace morvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  static Variables_grab v;
  apoyo::mesa m;
  const std::string texto = apoyo::archivo_de(datos, largo);
  std::string esperada;
  bool buena = true;
  for (const std::string& linea : apoyo::lineas_de(texto, "\r")) {
    buena = buena && linea.size() <= 252;
    esperada += linea + "..";
  }
  buena = buena && esperada.size() <= total_celdas;

  m.plat.paciencia = total_celdas;
  limpiar_buffer_salida(v);
  std::ranges::fill(v.mascara_salida, std::uint8_t{0});
  v.ruta_archivo = m.dir.escribir("f.bin", texto);
  const bool cargado = !cargar_bin(m.plat, v);
  apoyo::exigir(cargado == buena, "it tells the truth");
  std::vector<std::uint8_t> marcas(esperada.size(), 1), imagen(esperada.begin(), esperada.end());
  marcas.resize(total_celdas, 0);
  apoyo::exigir(!buena || v.mascara_salida == marcas, "marks");
  if (!buena) imagen.clear();
  apoyo::exigir(v.dir_max == std::max<std::int32_t>(static_cast<std::int32_t>(imagen.size()) - 1, 0), "dir_max");
  imagen.resize(total_celdas, 0xFF);
  apoyo::exigir(v.buffer_salida == imagen, "image");
  return 0;
}
