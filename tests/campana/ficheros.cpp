#include "ficheros.h"

#include <array>
#include <cstdio>

namespace campana {

namespace {

constexpr std::int32_t hueco_desde = 0x400, hueco_hasta = 0x41F;

std::string registro(puente::azar& a, contenido& c, std::int32_t dir) {
  const int ancho = dir > 0xFF00 ? 6 + 2 * static_cast<int>(a.hasta(2)) : 4 + 2 * static_cast<int>(a.hasta(3));
  const std::int32_t cuantos = 4 * static_cast<std::int32_t>(1 + a.hasta(8));
  std::array<char, 16> texto{};
  std::snprintf(texto.data(), texto.size(), "S%d%02X%0*X", ancho / 2 - 1, cuantos + ancho / 2 + 1, ancho, dir);
  std::string linea = texto.data();
  for (std::int32_t i = dir; i < dir + cuantos; ++i) {
    const auto byte = static_cast<std::uint8_t>(a.una_de(4) ? 0xFF : a.hasta(256));
    std::snprintf(texto.data(), texto.size(), "%02X", byte);
    linea += texto.data();
    c.bytes[i] = byte;
    c.dir_max = std::max(c.dir_max, i);
  }
  return linea + "00";
}

std::string registros(puente::azar& a, contenido& c, std::int32_t base) {
  const auto fin = [&a] { return std::array{"\r\n", "\n", "\r"}[a.hasta(3)]; };
  std::string texto = std::string(a.una_de(3) ? "\xEF\xBB\xBF" : "") + "S0030000FC" + fin();
  for (std::uint64_t n = 1 + a.hasta(6); n > 0; --n) {
    texto += registro(a, c, base + 4 * static_cast<std::int32_t>(a.hasta(40))) + fin();
  }
  for (std::int32_t i = hueco_desde; i <= hueco_hasta; ++i) c.bytes[i] = 0;
  return texto + "S9030000FC" + fin();
}

std::string binario(puente::azar& a, contenido& c) {
  std::string texto;
  for (std::uint64_t n = 1 + a.hasta(120); n > 0; --n) texto += static_cast<char>(0x20 + a.hasta(0xE0));
  for (const char byte : texto + "..") c.bytes[c.dir_max++] = static_cast<std::uint8_t>(byte);
  --c.dir_max;
  return texto;
}

}  // namespace

ficheros_al_azar::ficheros_al_azar(const apoyo::carpeta& dir, puente::azar& a) {
  const auto anadir = [&](const std::string& nombre, const std::string& texto, contenido c) {
    rutas_.push_back(dir.escribir(nombre, texto));
    contenidos_[rutas_.back()] = std::move(c);
  };
  // A file at the end of the flash makes long runs.
  const std::int32_t lejos = a.una_de(10) ? 0x3FF00 : 0x200;
  for (const std::int32_t base : {0x0, 0x0, 0x100, 0x3C0, 0x7FA0, lejos}) {
    contenido c;
    const std::string texto = registros(a, c, base);
    anadir("s" + std::to_string(rutas_.size()) + ".s19", texto, c);
  }
  for (const char* nombre : {"uno.bin", "dos.bin"}) {
    contenido c;
    const std::string texto = binario(a, c);
    anadir(nombre, texto, c);
  }
  contenido roto, daniado;
  daniado.vale = false;
  anadir("roto.s19", registros(a, roto, 0) + "S1G", daniado);
  anadir("vacio.s19", "", {});
  anadir("otro.hex", ":00000001FF", daniado);
  for (const char* nombre : {"/no/hay.s19", "no_hay.bin", "x", ""}) rutas_.emplace_back(nombre);
}

const contenido* ficheros_al_azar::de(const std::string& ruta) const {
  const auto c = contenidos_.find(ruta);
  return c == contenidos_.end() ? nullptr : &c->second;
}

}  // namespace campana
