#include "files/texto.h"

#include <algorithm>
#include <array>

namespace morvane {

namespace {

constexpr bool entre(unsigned char byte, unsigned char desde, unsigned char hasta) {
  return byte >= desde && byte <= hasta;
}

/// Bytes of the sequence that a leading byte announces, and the range of the byte behind it that keeps out overlong
/// forms, surrogates and values beyond U+10FFFF. 0 bytes for a byte that can lead none.
struct cabecera {
  std::size_t bytes = 0;
  unsigned char desde = 0x80, hasta = 0xBF;
};

constexpr cabecera anuncia(unsigned char primero) {
  if (entre(primero, 0xC2, 0xDF)) return {2};
  if (primero == 0xE0) return {3, 0xA0, 0xBF};
  if (primero == 0xED) return {3, 0x80, 0x9F};
  if (entre(primero, 0xE1, 0xEF)) return {3};
  if (primero == 0xF0) return {4, 0x90, 0xBF};
  if (entre(primero, 0xF1, 0xF3)) return {4};
  if (primero == 0xF4) return {4, 0x80, 0x8F};
  return {};
}

/// Bytes of the character at the front of a text that is not empty.
std::size_t bytes_caracter(std::string_view texto) {
  const auto primero = static_cast<unsigned char>(texto[0]);
  if (primero < 0x80) return 1;
  const cabecera c = anuncia(primero);
  if (c.bytes == 0 || texto.size() < c.bytes) return 1;
  if (!entre(static_cast<unsigned char>(texto[1]), c.desde, c.hasta)) return 1;
  for (std::size_t i = 2; i < c.bytes; ++i) {
    if (!entre(static_cast<unsigned char>(texto[i]), 0x80, 0xBF)) return 1;
  }
  return c.bytes;
}

/// Removes up to `cuantos` characters from the front of `texto` and says how many there were.
std::size_t saltar(std::string_view& texto, std::size_t cuantos) {
  std::size_t hechos = 0;
  for (; hechos < cuantos && !texto.empty(); ++hechos) texto.remove_prefix(bytes_caracter(texto));
  return hechos;
}

bool es_utf8(std::string_view texto) {
  while (!texto.empty()) {
    const std::size_t bytes = bytes_caracter(texto);
    if (bytes == 1 && static_cast<unsigned char>(texto[0]) >= 0x80) return false;
    texto.remove_prefix(bytes);
  }
  return true;
}

/// The characters of Windows-1252 from 0x80 to 0x9F; all others have the number of their byte.
constexpr std::array<char16_t, 32> ventanas_1252 = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

void anadir_utf8(std::string& destino, char16_t caracter) {
  const auto seis = [](unsigned bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
  if (caracter < 0x80) {
    destino += static_cast<char>(caracter);
  } else if (caracter < 0x800) {
    destino += static_cast<char>(0xC0 | caracter >> 6);
    destino += seis(caracter);
  } else {
    destino += static_cast<char>(0xE0 | caracter >> 12);
    destino += seis(caracter >> 6);
    destino += seis(caracter);
  }
}

}  // namespace

void anadir_hex(std::string& destino, std::uint32_t valor, std::size_t ancho) {
  std::array<char, 8> cifras;
  if (ancho > cifras.size()) destino.append(ancho - cifras.size(), '0');
  const std::size_t tope = cifras.size() - std::min(ancho, cifras.size());
  std::size_t inicio = cifras.size();
  do {
    cifras[--inicio] = "0123456789ABCDEF"[valor & 0xF];
    valor >>= 4;
  } while (valor != 0 || inicio > tope);
  destino.append(cifras.data() + inicio, cifras.size() - inicio);
}

std::string hex(std::uint32_t valor, std::size_t ancho) {
  std::string texto;
  anadir_hex(texto, valor, ancho);
  return texto;
}

int digito_hex(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

std::uint32_t valor_hex(std::string_view texto) {
  std::uint32_t valor = 0;
  for (const char c : texto) {
    const int digito = digito_hex(c);
    if (digito < 0) break;
    valor = valor << 4 | static_cast<std::uint32_t>(digito);
  }
  return valor;
}

std::string mayusculas(std::string_view texto) {
  std::string alta(texto);
  for (char& c : alta) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return alta;
}

std::string_view sin_blancos(std::string_view texto) {
  const std::size_t inicio = texto.find_first_not_of(' ');
  if (inicio == std::string_view::npos) return {};
  return texto.substr(inicio, texto.find_last_not_of(' ') - inicio + 1);
}

std::size_t longitud(std::string_view texto) {
  return saltar(texto, std::string_view::npos);
}

std::string_view trozo(std::string_view texto, std::size_t inicio, std::size_t cuantos) {
  if (inicio > 1) saltar(texto, inicio - 1);
  std::string_view resto = texto;
  saltar(resto, cuantos);
  return texto.substr(0, texto.size() - resto.size());
}

std::string en_utf8(std::string_view texto) {
  if (es_utf8(texto)) return std::string(texto);
  std::string otro;
  for (const char c : texto) {
    const auto byte = static_cast<unsigned char>(c);
    anadir_utf8(otro, entre(byte, 0x80, 0x9F) ? ventanas_1252[byte - 0x80] : byte);
  }
  return otro;
}

}  // namespace morvane
