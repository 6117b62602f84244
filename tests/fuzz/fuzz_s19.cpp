// An S-record file of any content gives the image that a plain reading of its lines gives, or none at all.

#include "files/texto.h"
#include "fuzz/mesa.h"
#include "image/cargar_s19.h"

using namespace morvane;

namespace {

/// False if the line goes past a limit.
bool poner(Variables_grab& v, const std::string& linea) {
  if (linea.size() < 2 || linea[0] != 'S' || linea[1] < '1' || linea[1] > '3') return true;
  const auto ancho = static_cast<std::size_t>(linea[1] - '0') * 2 + 2;
  if (linea.size() < ancho + 6 || linea.size() > ancho + 6 + 248) return false;
  const std::string dir = linea.substr(4, ancho);
  if (std::ranges::any_of(dir, [](char c) { return digito_hex(c) < 0; })) return false;
  std::string datos = linea.substr(4 + ancho, linea.size() - 6 - ancho);
  while (datos.size() % 8 != 0) datos += 'F';
  const std::uint64_t primera = valor_hex(dir);
  if (!datos.empty() && primera + datos.size() / 2 > total_celdas) return false;
  for (std::size_t i = 0; i < datos.size(); i += 2) {
    const auto valor = static_cast<std::uint8_t>(valor_hex(datos.substr(i, 2)));
    poner_byte(v, static_cast<std::int32_t>(primera + i / 2), valor);
  }
  std::fill_n(v.buffer_salida.begin() + 0x400, 0x20, std::uint8_t{0});
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  static Variables_grab v, esperada;
  static const Variables_grab vacia = [] {
    Variables_grab nueva;
    limpiar_buffer_salida(nueva);
    return nueva;
  }();
  const std::string texto = apoyo::archivo_de(datos, largo);
  apoyo::mesa m;
  contador_cambios cambios;
  avance a(cambios);
  v = esperada = vacia;
  v.ruta_archivo = m.dir.escribir("f.s19", texto);
  const bool cargado = !cargar_s19(m.plat, v, a);

  const std::string marca = "\xEF\xBB\xBF";
  const auto lineas = apoyo::lineas_de(texto.starts_with(marca) ? texto.substr(marca.size()) : texto, "\r\n");
  const bool buena = std::ranges::all_of(lineas, [](const auto& linea) { return poner(esperada, linea); });
  apoyo::exigir(cargado == buena, "it tells the truth");
  apoyo::exigir(v.mascara_salida == esperada.mascara_salida, "marks");
  if (!buena) esperada = vacia;
  apoyo::exigir(v.buffer_salida == esperada.buffer_salida && v.dir_max == esperada.dir_max, "image");
  return 0;
}
