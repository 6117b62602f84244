#include <algorithm>
#include <array>
#include <vector>

#include "bridge/placa.h"
#include "tramas.h"

namespace puente {

namespace {

/// "e" answers with at most this many bytes, so that code and data stay within 255 characters.
constexpr std::uint32_t maximo_lectura = 127;
/// What a board gives that has no room for so many.
constexpr std::uint32_t lectura_corta = 32;

/// A check of a range answers in one of three forms, after the number of bytes it covers.
constexpr std::uint32_t rango_corto = 0x1000;

constexpr std::uint32_t bloque = 0x8000;

/// What the program's windows ask for.
bool lectura_usual(std::uint32_t cuantos) {
  return cuantos == 0x20 || cuantos == 0x16;
}
bool examen_usual(std::uint32_t desde, std::uint32_t cuantos) {
  return cuantos == bloque ? desde % bloque == 0 : desde == 0 && (cuantos == 1 || cuantos == 0x401);
}

std::string codigo(chip::resultado r) {
  switch (r) {
    case chip::resultado::hecho:
      return "0";
    case chip::resultado::inactivo:
      return "7";
    case chip::resultado::fuera:
      return "9";
    case chip::resultado::ocupado:
    case chip::resultado::protegido:
    case chip::resultado::sin_permiso:
      break;
  }
  return "6";
}

std::string pares(std::span<const std::uint8_t> datos) {
  std::string texto;
  for (const std::uint8_t b : datos) texto += texto_hex(b, 2);
  return texto;
}

/// What a range holds: all its bytes added up, and ANDed, which gives 0xFF only for an erased range.
struct examen {
  std::uint64_t suma = 0;
  std::uint8_t comun = 0xFF;
};

examen recorrer(const chip& c, std::uint32_t desde, std::uint32_t cuantos) {
  examen e;
  constexpr std::uint32_t paso = 4096;
  std::array<std::uint8_t, paso> trozo;
  // Cells behind the end of the flash read as 0xFF, so they count without being read.
  const std::uint32_t hay = desde < chip::tamano ? std::min(cuantos, chip::tamano - desde) : 0;
  e.suma = std::uint64_t{0xFF} * (cuantos - hay);
  for (std::uint32_t n = 0; n < hay; n += paso) {
    const std::span parte = std::span(trozo).first(std::min(paso, hay - n));
    c.leer(desde + n, parte);
    for (const std::uint8_t b : parte) {
      e.suma += b;
      e.comun &= b;
    }
  }
  return e;
}

}  // namespace

/// `comando` has passed `juzgar`. Gives code and data of the reply.
std::string placa::ejecutar(std::string_view comando) {
  const char letra = comando[0];
  const std::string_view campos = comando.substr(1);
  if (letra != 'A' && letra != 'D' && !chip_.abierto()) return codigo(chip::resultado::inactivo);
  switch (letra) {
    case 'A':
      chip_.abrir();
      return "0";
    case 'D':
      chip_.cerrar();
      return "0";
    case 'a':
      return codigo(chip_.permitir_escritura());
    case 'c':
      return "0" + texto_hex(chip_.estado(), 2);
    case 'd':
      return codigo(chip_.escribir_config(static_cast<std::uint8_t>(valor_hex(campos))));
    case 'e':
      return leer(campos);
    case 'g':
      return grabar(campos);
    case 'i':
      return codigo(chip_.borrar());
    case 'j':
      chip_.reiniciar();
      return "0";
    default:
      return examinar(campos);
  }
}

std::string placa::grabar(std::string_view campos) {
  std::array<std::uint8_t, 4> datos;
  for (std::size_t i = 0; i < datos.size(); ++i) {
    datos[i] = static_cast<std::uint8_t>(valor_hex(campos.substr(6 + 2 * i, 2)));
  }
  // Ones change nothing: the chip goes through the motions and the cells stay as they were.
  if (fallos.por_mil_sin_grabar > 0 && azar_() % 1000 < fallos.por_mil_sin_grabar) datos.fill(0xFF);
  return codigo(chip_.grabar(valor_hex(campos.substr(0, 6)), datos));
}

std::string placa::leer(std::string_view campos) const {
  const std::uint32_t cuantos = valor_hex(campos.substr(6));
  const bool la_toma = cuantos <= maximo_lectura && (!fallos.formas_fijas || lectura_usual(cuantos));
  if (cuantos == 0 || !la_toma) return codigo(chip::resultado::fuera);
  std::vector<std::uint8_t> datos(fallos.lecturas_cortas ? std::min(cuantos, lectura_corta) : cuantos);
  const chip::resultado r = chip_.leer(valor_hex(campos.substr(0, 6)), datos);
  return codigo(r) + (r == chip::resultado::hecho ? pares(datos) : "");
}

/// One byte: its mark and a sum of 8 digits. A short range: mark, a sum of 9. A block: its first 16 bytes, mark, a sum
/// of 8. The mark is "FF" exactly if all is erased.
std::string placa::examinar(std::string_view campos) const {
  std::uint32_t desde = valor_hex(campos.substr(0, 6));
  const std::uint32_t cuantos = valor_hex(campos.substr(6)) + 1;
  if (fallos.formas_fijas && !examen_usual(desde, cuantos)) return codigo(chip::resultado::fuera);
  if (fallos.bloques_enteros && cuantos == bloque) desde -= desde % bloque;
  if (fallos.cortos_desde_cero && cuantos <= rango_corto) desde = 0;
  std::array<std::uint8_t, 16> principio;
  const chip::resultado r = chip_.leer(desde, principio);
  if (r != chip::resultado::hecho) return codigo(r);
  const examen e = recorrer(chip_, desde, cuantos);
  const std::string marca = texto_hex(e.comun, 2);
  if (cuantos == 1) return "0" + marca + texto_hex(e.suma, 8);
  if (cuantos <= rango_corto) return "0" + marca + texto_hex(e.suma, 9);
  return "0" + pares(principio) + marca + texto_hex(e.suma, 8);
}

}  // namespace puente
