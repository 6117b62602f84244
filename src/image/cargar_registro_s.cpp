#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

#include "cifras_hex.h"
#include "image/cargar_s19.h"

namespace morvane {

namespace {

constexpr std::size_t inicio_dir = 4;
constexpr std::size_t largo_suma = 2;
constexpr std::size_t maximo_datos = 248;
/// Data goes out to the chip in groups of four bytes.
constexpr std::size_t cifras_grupo = 8;

/// A pair counts up to its first character that is no digit.
constexpr std::uint8_t valor_par(char alta, char baja) {
  const int a = cifra(alta), b = cifra(baja);
  if (a < 0) return 0;
  return static_cast<std::uint8_t>(b < 0 ? a : a * 16 + b);
}

std::optional<fallo_carga> mirar_largo(std::uint64_t largo_linea, std::size_t ancho_dir) {
  const std::size_t minimo = inicio_dir + ancho_dir + largo_suma;
  if (largo_linea < minimo) {
    return fallo_carga{.cual = fallo_carga::clase::linea_corta,
                       .hay = largo_linea,
                       .limite = minimo,
                       .tipo = static_cast<int>(ancho_dir / 2 - 1)};
  }
  if (largo_linea - minimo > maximo_datos) {
    return fallo_carga{.cual = fallo_carga::clase::datos_largos, .hay = largo_linea - minimo, .limite = maximo_datos};
  }
  return std::nullopt;
}

fallo_carga fallo_de_cifras(std::string_view campo) {
  const auto mala = std::find_if(campo.begin(), campo.end(), [](char c) { return cifra(c) < 0; });
  const auto posicion = static_cast<std::uint64_t>(mala - campo.begin()) + inicio_dir + 1;
  return {.cual = fallo_carga::clase::cifra, .hay = posicion};
}

std::optional<fallo_carga> mirar_sitio(std::uint32_t dir, std::size_t bytes) {
  if (bytes == 0 || hay_celda(std::int64_t{dir} + static_cast<std::int64_t>(bytes) - 1)) return std::nullopt;
  const std::uint32_t primera = std::max(dir, static_cast<std::uint32_t>(total_celdas));
  return fallo_carga{.cual = fallo_carga::clase::fuera_de_memoria, .hay = primera};
}

template <std::size_t... i>
std::optional<std::uint32_t> valor_de(const char* texto, std::index_sequence<i...> /*cifras*/) {
  if ((cifra(texto[i]) | ...) < 0) return std::nullopt;
  std::uint32_t valor = 0;
  ((valor = valor << 4 | static_cast<std::uint32_t>(cifra(texto[i]))), ...);
  return valor;
}

/// Nothing if a character is no digit.
std::optional<std::uint32_t> valor_dir(std::string_view campo) {
  if (campo.size() == 4) return valor_de(campo.data(), std::make_index_sequence<4>());
  if (campo.size() == 6) return valor_de(campo.data(), std::make_index_sequence<6>());
  return valor_de(campo.data(), std::make_index_sequence<8>());
}

void poner_pares(std::uint8_t* celdas, const char* texto, std::size_t pares) {
  for (std::size_t i = 0; i < pares; ++i) celdas[i] = valor_par(texto[2 * i], texto[2 * i + 1]);
}

/// `datos` filled up to whole groups with "F".
void poner_datos(std::uint8_t* celdas, std::string_view datos) {
  const std::size_t enteras = datos.size() / cifras_grupo * cifras_grupo;
  poner_pares(celdas, datos.data(), enteras / 2);
  if (enteras == datos.size()) return;
  std::array<char, cifras_grupo> resto;
  resto.fill('F');
  std::copy(datos.begin() + static_cast<std::ptrdiff_t>(enteras), datos.end(), resto.begin());
  poner_pares(celdas + enteras / 2, resto.data(), cifras_grupo / 2);
}

void guardar_datos(Variables_grab& v, std::uint32_t dir, std::string_view datos, std::size_t bytes) {
  if (bytes == 0) return;
  poner_datos(v.buffer_salida.data() + dir, datos);
  std::memset(v.mascara_salida.data() + dir, 1, bytes);
  v.dir_max = std::max(v.dir_max, static_cast<std::int32_t>(dir + bytes - 1));
}

}  // namespace

std::optional<fallo_carga> cargar_registro_s(Variables_grab& v, std::string_view linea, std::uint64_t largo_linea,
                                             std::uint8_t ancho_dir) {
  if (const auto fallo = mirar_largo(largo_linea, ancho_dir)) return fallo;
  const std::string_view campo_dir(linea.data() + inicio_dir, ancho_dir);
  const std::optional<std::uint32_t> dir = valor_dir(campo_dir);
  if (!dir) return fallo_de_cifras(campo_dir);
  const std::size_t inicio = inicio_dir + ancho_dir;
  const std::string_view datos(linea.data() + inicio, linea.size() - inicio - largo_suma);
  const std::size_t bytes = (datos.size() + cifras_grupo - 1) / cifras_grupo * cifras_grupo / 2;
  if (const auto fallo = mirar_sitio(*dir, bytes)) return fallo;
  guardar_datos(v, *dir, datos, bytes);
  std::memset(v.buffer_salida.data() + chip.configuracion.desde, 0, chip.configuracion.largo());
  return std::nullopt;
}

}  // namespace morvane
