#include "lectores.h"

#include <algorithm>

#include "files/texto.h"

namespace morvane::console {

using clase = fallo_firmware::clase;

void dicho_por_archivo::poner(std::int32_t dir, std::uint8_t valor, std::uint64_t linea) {
  std::int16_t& antes = valores_[static_cast<std::size_t>(dir)];
  if (antes != nada && antes != valor) {
    if (choque_.cuantos == 0 || dir < choque_.direccion) choque_.direccion = dir, choque_.linea = linea;
    ++choque_.cuantos;
  }
  antes = valor;
}

std::optional<aviso> dicho_por_archivo::solapado() const {
  return choque_.cuantos == 0 ? std::nullopt : std::optional(choque_);
}

fin_de_lectura poner_bytes(lectura_firmware& l, std::uint64_t dir, std::string_view bytes, std::uint64_t linea) {
  const std::uint64_t fin = static_cast<std::uint64_t>(chip.flash);
  if (bytes.empty()) return std::nullopt;
  if (dir >= fin || bytes.size() > fin - dir) {
    return fallo_firmware{.cual = clase::fuera_de_memoria, .linea = linea, .hay = std::max(dir, fin)};
  }
  auto donde = static_cast<std::int32_t>(dir);
  for (const char c : bytes) {
    l.dicho.poner(donde, static_cast<std::uint8_t>(c), linea);
    poner_byte(l.f.v, donde++, static_cast<std::uint8_t>(c));
  }
  return std::nullopt;
}

fin_de_lectura octetos_de(std::string_view linea, std::size_t tras, std::vector<std::uint8_t>& destino) {
  destino.clear();
  for (std::size_t i = tras; i < linea.size(); ++i) {
    const int cifra = digito_hex(linea[i]);
    if (cifra < 0)
      return fallo_firmware{.cual = es_blanca(linea.substr(i, 1)) ? clase::blanco : clase::cifra, .hay = i + 1};
    const bool alta = (i - tras) % 2 == 0;
    if (alta) destino.push_back(static_cast<std::uint8_t>(cifra << 4));
    if (!alta) destino.back() = static_cast<std::uint8_t>(destino.back() | cifra);
  }
  if ((linea.size() - tras) % 2 != 0) return fallo_firmware{.cual = clase::corto};
  return std::nullopt;
}

void contar_ajena(firmware& f, std::uint64_t linea) {
  const auto es = [](const aviso& a) { return a.cual == aviso::clase::lineas_ajenas; };
  const auto hay = std::ranges::find_if(f.avisos, es);
  if (hay != f.avisos.end()) {
    ++hay->cuantos;
  } else {
    f.avisos.push_back({.cual = aviso::clase::lineas_ajenas, .linea = linea, .cuantos = 1});
  }
}

bool es_blanca(std::string_view linea) {
  return linea.find_first_not_of(" \t\x1A") == std::string_view::npos;
}

}  // namespace morvane::console
