#include "serial/tramas.h"

#include <cstdint>

namespace morvane {

namespace {

constexpr std::string_view cifras = "0123456789ABCDEF";

void anadir_suma(std::string& destino, std::string_view texto) {
  std::uint32_t suma = 0;
  for (const char c : texto) suma += static_cast<unsigned char>(c);
  destino += cifras[suma >> 4 & 0xF];
  destino += cifras[suma & 0xF];
}

}  // namespace

std::string suma_comprobacion(std::string_view texto) {
  std::string digitos;
  anadir_suma(digitos, texto);
  return digitos;
}

std::string en_trama(std::string_view texto) {
  std::string trama;
  trama.reserve(texto.size() + 4);
  trama += STX;
  trama += texto;
  anadir_suma(trama, texto);
  trama += ETX;
  return trama;
}

bool validar_checksum(std::string_view trama) {
  if (trama.size() < 3) return false;
  const std::size_t n = trama.size() - 2;
  return suma_comprobacion(trama.substr(0, n)) == trama.substr(n);
}

std::optional<respuesta_leida> leer_respuesta(std::string_view trama) {
  if (!validar_checksum(trama)) return std::nullopt;
  return respuesta_leida{trama.front(), trama.substr(1, trama.size() - 3)};
}

}  // namespace morvane
