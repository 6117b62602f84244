#include <charconv>

#include "serial/transporte.h"

namespace morvane {

namespace {

constexpr int velocidad_minima = 50, velocidad_maxima = 4'000'000;

void saltar_separadores(std::string_view& texto) {
  const std::size_t inicio = texto.find_first_not_of(", ");
  texto.remove_prefix(inicio == std::string_view::npos ? texto.size() : inicio);
}

bool tomar(std::string_view& texto, std::string_view prefijo) {
  if (!texto.starts_with(prefijo)) return false;
  texto.remove_prefix(prefijo.size());
  return true;
}

bool tomar_velocidad(std::string_view& texto, int& velocidad) {
  const auto [fin, error] = std::from_chars(texto.data(), texto.data() + texto.size(), velocidad);
  if (error != std::errc{}) return false;
  texto.remove_prefix(static_cast<std::size_t>(fin - texto.data()));
  return velocidad >= velocidad_minima && velocidad <= velocidad_maxima;
}

bool tomar_paridad(std::string_view& texto, char& paridad) {
  if (texto.empty()) return false;
  const std::size_t cual = std::string_view("nemosNEMOS").find(texto.front());
  if (cual == std::string_view::npos) return false;
  paridad = "nemos"[cual % 5];
  texto.remove_prefix(1);
  return true;
}

bool tomar_bits_datos(std::string_view& texto, int& bits) {
  if (texto.empty() || texto.front() < '5' || texto.front() > '8') return false;
  bits = texto.front() - '0';
  texto.remove_prefix(1);
  return true;
}

bool tomar_parada(std::string_view& texto, int& medios_bits) {
  if (tomar(texto, "1.5")) {
    medios_bits = 3;
  } else if (tomar(texto, "1")) {
    medios_bits = 2;
  } else if (tomar(texto, "2")) {
    medios_bits = 4;
  } else {
    return false;
  }
  return true;
}

/// With five data bits the second stop bit is half a one, on every line there is.
bool posible(const parametros_linea& linea) {
  return linea.medios_bits_parada == 2 || (linea.bits_datos == 5) == (linea.medios_bits_parada == 3);
}

}  // namespace

std::optional<parametros_linea> leer_parametros(std::string_view texto) {
  parametros_linea linea;
  saltar_separadores(texto);
  if (!tomar_velocidad(texto, linea.velocidad)) return std::nullopt;
  saltar_separadores(texto);
  if (!tomar_paridad(texto, linea.paridad)) return std::nullopt;
  saltar_separadores(texto);
  if (!tomar_bits_datos(texto, linea.bits_datos)) return std::nullopt;
  saltar_separadores(texto);
  if (!tomar_parada(texto, linea.medios_bits_parada)) return std::nullopt;
  saltar_separadores(texto);
  if (!texto.empty() || !posible(linea)) return std::nullopt;
  return linea;
}

}  // namespace morvane
