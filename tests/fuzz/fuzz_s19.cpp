// An S-record file of any content gives the image that a plain reading of its lines gives, or none at all.

#include <algorithm>
#include <cctype>
#include <vector>

#include "apoyo/carpeta.h"
#include "fuzz/exigir.h"
#include "image/cargar_s19.h"
#include "platform/gemelo.h"

using namespace morvane;

namespace {

std::vector<std::string> lineas_de(const std::string& texto) {
  const char final = texto.find('\r') == std::string::npos ? '\n' : '\r';
  std::vector<std::string> lineas;
  for (std::size_t i = 0; i < texto.size();) {
    const std::size_t fin = std::min(texto.find(final, i), texto.size());
    lineas.push_back(texto.substr(i, fin - i));
    i = fin + 1;
    if (final == '\r' && i < texto.size() && texto[i] == '\n') ++i;
  }
  return lineas;
}

bool es_cifra(char c) {
  return std::isxdigit(static_cast<unsigned char>(c)) != 0;
}

/// False if the line goes past a limit.
bool poner(Variables_grab& v, const std::string& linea) {
  if (linea.size() < 2 || linea[0] != 'S' || linea[1] < '1' || linea[1] > '3') return true;
  const auto ancho = static_cast<std::size_t>(linea[1] - '0') * 2 + 2;
  if (linea.size() < ancho + 6 || linea.size() > ancho + 6 + 248) return false;
  const std::string dir = linea.substr(4, ancho);
  if (!std::ranges::all_of(dir, es_cifra)) return false;
  std::string datos = linea.substr(4 + ancho, linea.size() - 6 - ancho);
  while (datos.size() % 8 != 0) datos += 'F';
  const std::uint64_t primera = std::stoull(dir, nullptr, 16);
  if (!datos.empty() && primera + datos.size() / 2 > total_celdas) return false;
  for (std::size_t i = 0; i < datos.size(); i += 2) {
    std::string par = datos.substr(i, 2);
    par.erase(std::ranges::find_if_not(par, es_cifra), par.end());
    const auto valor = par.empty() ? 0 : std::stoul(par, nullptr, 16);
    poner_byte(v, static_cast<std::int32_t>(primera + i / 2), static_cast<std::uint8_t>(valor));
  }
  std::fill_n(v.buffer_salida.begin() + 0x400, 0x20, std::uint8_t{0});
  return true;
}

void vaciar(Variables_grab& v) {
  limpiar_buffer_salida(v);
  std::fill(v.mascara_salida.begin(), v.mascara_salida.end(), std::uint8_t{0});
  v.dir_max = 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* datos, std::size_t largo) {
  static apoyo::carpeta dir;
  static Variables_grab v, esperada;
  const std::string texto = apoyo::archivo_de(datos, largo);
  gemelo plat;
  contador_cambios cambios;
  avance a(cambios);
  vaciar(v);
  v.ruta_archivo = dir.escribir("f.s19", texto);
  cargar_s19(plat, v, a);

  vaciar(esperada);
  const auto lineas = lineas_de(texto);
  const bool buena = std::ranges::all_of(lineas, [](const auto& linea) { return poner(esperada, linea); });
  apoyo::exigir(plat.cajas.size() == 1, "one box");
  apoyo::exigir((plat.cajas[0].texto == "Ha terminado de cargar el archivo") == buena, "the box tells the truth");
  apoyo::exigir(v.mascara_salida == esperada.mascara_salida, "marks");
  if (!buena) {
    limpiar_buffer_salida(esperada);
    esperada.dir_max = 0;
  }
  apoyo::exigir(v.buffer_salida == esperada.buffer_salida, "image");
  apoyo::exigir(v.dir_max == esperada.dir_max, "dir_max");
  apoyo::exigir(!a.cancelar && a.Progress.Value == 0, "bar and stop are put back");
  return 0;
}
