#include <algorithm>
#include <array>
#include <numeric>

#include "files/campos.h"
#include "image/cargar_s19.h"
#include "lectores.h"

namespace morvane::console {

namespace {

using clase = fallo_firmware::clase;

/// Bytes of the address of a record S0 to S9; 0 for S4, which is none.
constexpr std::array<std::size_t, 10> bytes_dir = {2, 2, 3, 4, 0, 2, 3, 4, 3, 2};

constexpr bool con_datos(char tipo) {
  return tipo >= '1' && tipo <= '3';
}
constexpr bool de_cuenta(char tipo) {
  return tipo == '5' || tipo == '6';
}
constexpr bool de_final(char tipo) {
  return tipo >= '7' && tipo <= '9';
}

/// A record: its count, the address, the data, the sum.
struct registro {
  char tipo = '0';
  std::vector<std::uint8_t> octetos;

  std::size_t ancho() const { return bytes_dir[static_cast<std::size_t>(tipo - '0')]; }
  std::uint32_t direccion() const {
    std::uint32_t dir = 0;
    for (std::size_t i = 1; i <= ancho(); ++i) dir = dir << 8 | octetos[i];
    return dir;
  }
};

bool es_registro(std::string_view linea) {
  if (linea.size() < 2 || linea[0] != 'S' || linea[1] < '0' || linea[1] > '9') return false;
  return bytes_dir[static_cast<std::size_t>(linea[1] - '0')] != 0;
}

fin_de_lectura desmontar(std::string_view linea, registro& r) {
  r.tipo = linea[1];
  if (auto fallo = octetos_de(linea, 2, r.octetos)) return fallo;
  if (r.octetos.size() < r.ancho() + 2) return fallo_firmware{.cual = clase::corto};
  const std::size_t siguen = r.octetos.size() - 1;
  if (r.octetos[0] != siguen) return fallo_firmware{.cual = clase::cuenta, .hay = siguen, .debe = r.octetos[0]};
  const int total = std::accumulate(r.octetos.begin(), r.octetos.end() - 1, 0);
  const auto suma = static_cast<std::uint8_t>(~total);
  if (r.octetos.back() != suma) return fallo_firmware{.cual = clase::suma, .hay = r.octetos.back(), .debe = suma};
  return std::nullopt;
}

class lector_s19 {
 public:
  explicit lector_s19(lectura_firmware& l) : l_(l) {}

  fin_de_lectura linea(std::string_view texto, std::uint64_t numero) {
    if (!es_registro(texto)) {
      if (!es_blanca(texto)) contar_ajena(l_.f, numero);
      return std::nullopt;
    }
    if (auto fallo = desmontar(texto, r_)) return fallo;
    if (de_final(r_.tipo)) acabado_ = true;
    if (de_cuenta(r_.tipo) && r_.direccion() != l_.f.registros) {
      return fallo_firmware{.cual = clase::registros, .hay = r_.direccion(), .debe = l_.f.registros};
    }
    return con_datos(r_.tipo) ? datos(texto, numero) : std::nullopt;
  }

  void acabar() {
    if (!acabado_) l_.f.avisos.push_back({.cual = aviso::clase::sin_final});
    if (tras_.cuantos > 0) l_.f.avisos.push_back(tras_);
    mirar_imagen();
  }

 private:
  /// Stored by the very routine of the window, so that the image is the same.
  fin_de_lectura datos(std::string_view texto, std::uint64_t numero) {
    const auto cifras_dir = static_cast<std::uint8_t>(2 * r_.ancho());
    if (const auto fallo = cargar_registro_s(l_.f.v, texto, texto.size(), cifras_dir)) {
      return fallo_firmware{.cual = clase::carga, .carga = fallo_en_linea(numero, *fallo)};
    }
    ++l_.f.registros;
    if (acabado_ && tras_.cuantos++ == 0) tras_.linea = numero;
    auto dir = static_cast<std::int32_t>(r_.direccion());
    for (std::size_t i = r_.ancho() + 1; i + 1 < r_.octetos.size(); ++i) l_.dicho.poner(dir++, r_.octetos[i], numero);
    return std::nullopt;
  }

  /// Where the image is not what the file says.
  void mirar_imagen() {
    aviso pisado{.cual = aviso::clase::pisado_por_relleno}, a_cero{.cual = aviso::clase::configuracion_a_cero};
    for (std::int32_t dir = 0; dir < total_celdas; ++dir) {
      if (!l_.dicho.dice(dir)) continue;
      if (l_.dicho.valor(dir) == l_.f.v.buffer_salida[static_cast<std::size_t>(dir)]) continue;
      aviso& cual = chip.configuracion.contiene({dir, dir + 1}) ? a_cero : pisado;
      if (cual.cuantos++ == 0) cual.direccion = dir;
    }
    for (const aviso& a : {pisado, a_cero}) {
      if (a.cuantos > 0) l_.f.avisos.push_back(a);
    }
  }

  lectura_firmware& l_;
  registro r_;
  bool acabado_ = false;
  aviso tras_{.cual = aviso::clase::tras_el_final};
};

}  // namespace

fin_de_lectura leer_s19(lectura_firmware& l) {
  lector_s19 lector(l);
  std::string_view resto = sin_marca_utf8(l.contenido);
  for (std::uint64_t numero = 1; !resto.empty(); ++numero) {
    if (auto fallo = lector.linea(siguiente_linea(resto), numero)) {
      fallo->linea = numero;
      return fallo;
    }
  }
  lector.acabar();
  return std::nullopt;
}

}  // namespace morvane::console
