#include <array>
#include <numeric>

#include "files/campos.h"
#include "files/texto.h"
#include "lectores.h"

namespace morvane::console {

namespace {

using clase = fallo_firmware::clase;

enum tipo_hex : std::uint8_t { datos, final, segmento, inicio_segmentado, lineal, inicio_lineal };

/// Bytes that a record of each type has; of data there may be any number.
constexpr std::array<std::size_t, 6> largo_de_tipo = {0, 0, 2, 4, 2, 4};
/// In front of the data: its length, two bytes of the address, the type. Behind it the sum.
constexpr std::size_t cabecera = 4;
constexpr std::uint32_t en_segmento = 0xFFFF;

class lector_hex {
 public:
  explicit lector_hex(lectura_firmware& l) : l_(l) {}

  fin_de_lectura linea(std::string_view texto, std::uint64_t numero) {
    if (texto.empty() || texto.front() != ':') {
      if (!es_blanca(texto)) contar_ajena(l_.f, numero);
      return std::nullopt;
    }
    if (auto fallo = desmontar(texto)) return fallo;
    if (acabado_) return contar_tras_el_final(numero), std::nullopt;
    return atender(numero);
  }

  void acabar() {
    if (!acabado_) l_.f.avisos.push_back({.cual = aviso::clase::sin_final});
    if (tras_.cuantos > 0) l_.f.avisos.push_back(tras_);
  }

 private:
  std::size_t largo() const { return octetos_[0]; }
  std::uint8_t tipo() const { return octetos_[3]; }
  std::uint32_t par(std::size_t i) const { return std::uint32_t{octetos_[i]} << 8 | octetos_[i + 1]; }

  fin_de_lectura desmontar(std::string_view texto) {
    if (auto fallo = octetos_de(texto, 1, octetos_)) return fallo;
    if (octetos_.size() <= cabecera) return fallo_firmware{.cual = clase::corto};
    const std::size_t hay = octetos_.size() - cabecera - 1;
    if (largo() != hay) return fallo_firmware{.cual = clase::cuenta, .hay = hay, .debe = largo()};
    const int total = std::accumulate(octetos_.begin(), octetos_.end() - 1, 0);
    const auto suma = static_cast<std::uint8_t>(-total);
    if (octetos_.back() != suma) return fallo_firmware{.cual = clase::suma, .hay = octetos_.back(), .debe = suma};
    return std::nullopt;
  }

  void contar_tras_el_final(std::uint64_t numero) {
    if (tipo() == datos && tras_.cuantos++ == 0) tras_.linea = numero;
  }

  fin_de_lectura atender(std::uint64_t numero) {
    if (tipo() >= largo_de_tipo.size()) return fallo_firmware{.cual = clase::tipo, .hay = tipo()};
    if (tipo() == datos) return poner(numero);
    if (largo() != largo_de_tipo[tipo()]) {
      return fallo_firmware{.cual = clase::largo_de_tipo, .hay = largo(), .debe = largo_de_tipo[tipo()]};
    }
    if (tipo() == final) acabado_ = true;
    if (tipo() == segmento || tipo() == lineal) {
      segmentado_ = tipo() == segmento;
      base_ = par(cabecera) << (segmentado_ ? 4 : 16);
    }
    return std::nullopt;
  }

  /// Within a segment addresses begin again at its start.
  fin_de_lectura poner(std::uint64_t numero) {
    ++l_.f.registros;
    const std::uint32_t desplazamiento = par(1);
    for (std::uint32_t i = 0; i < largo(); ++i) {
      const std::uint32_t suma = desplazamiento + i;
      const std::uint64_t dir = std::uint64_t{base_} + (segmentado_ ? suma & en_segmento : suma);
      const char byte = static_cast<char>(octetos_[cabecera + i]);
      if (auto fallo = poner_bytes(l_, dir, {&byte, 1}, numero)) return fallo;
    }
    return std::nullopt;
  }

  lectura_firmware& l_;
  std::vector<std::uint8_t> octetos_;
  std::uint32_t base_ = 0;
  bool segmentado_ = false, acabado_ = false;
  aviso tras_{.cual = aviso::clase::tras_el_final};
};

}  // namespace

fin_de_lectura leer_hex(lectura_firmware& l) {
  lector_hex lector(l);
  std::string_view resto = sin_marca_utf8(l.contenido);
  for (std::uint64_t numero = 1; !resto.empty(); ++numero) {
    if (auto fallo = lector.linea(sin_blancos(siguiente_linea(resto)), numero)) {
      fallo->linea = numero;
      return fallo;
    }
  }
  lector.acabar();
  return std::nullopt;
}

}  // namespace morvane::console
