#include "image/filas.h"

#include <algorithm>
#include <string>

#include "files/texto.h"

namespace morvane {

namespace {

constexpr std::uint8_t borrado = 0xFF;
/// Of a dump: the first digit of the first byte, from one byte to the next, the character of the first byte.
constexpr std::size_t columna_bytes = 8, paso_bytes = 3, columna_caracteres = 57, caracteres_por_fila = 73;
/// Of a comparison: from the end of the address to the first byte, and from its end to the second one.
constexpr std::size_t hueco_entrada = 5, hueco_salida = 3;

char visible(std::uint8_t byte) {
  return byte >= 0x20 && byte <= 0x7E ? static_cast<char>(byte) : '.';
}

struct diferencia {
  std::int32_t dir;
  std::uint8_t entrada, salida;
};

class comparacion final : public diferencias {
 public:
  comparacion(std::vector<diferencia> lista, tramo leido) : lista_(std::move(lista)), leido_(leido) {}

  std::size_t cuantas() const override { return lista_.size(); }
  std::int32_t direccion(std::size_t indice) const override { return lista_[indice].dir; }

  std::size_t primera_conocida() const override {
    const auto primera = std::ranges::lower_bound(lista_, leido_.desde, {}, &diferencia::dir);
    const bool hay = primera != lista_.end() && primera->dir < leido_.hasta;
    return hay ? static_cast<std::size_t>(primera - lista_.begin()) : 0;
  }

  std::string texto(std::size_t indice) const override {
    const diferencia& d = lista_[indice];
    return cifras_de(d) + std::string(hueco_entrada, ' ') + hex(d.entrada) + std::string(hueco_salida, ' ') +
           hex(d.salida);
  }

  // A byte below 0x10 has one digit, which is compared with the last one of the other byte.
  std::vector<parte_realzada> realces(std::size_t indice) const override {
    const diferencia& d = lista_[indice];
    const std::string entrada = hex(d.entrada), salida = hex(d.salida);
    const std::size_t columna = cifras_de(d).size() + hueco_entrada;
    if (d.dir < leido_.desde || d.dir >= leido_.hasta) return {{0, texto(indice).size(), realce::ignorado}};
    std::vector<parte_realzada> partes;
    realzar(partes, columna, entrada, d);
    realzar(partes, columna + entrada.size() + hueco_salida, salida, d);
    return partes;
  }

 private:
  static std::string cifras_de(const diferencia& d) {
    const std::string dir = hex(static_cast<std::uint32_t>(d.dir));
    return std::string(dir.size() < 6 ? 6 - dir.size() : 0, ' ') + dir;
  }

  static void realzar(std::vector<parte_realzada>& partes, std::size_t columna, const std::string& cifras,
                      const diferencia& d) {
    const bool alta = cifras.size() == 2 && (d.entrada ^ d.salida) > 0x0F;
    const bool baja = ((d.entrada ^ d.salida) & 0x0F) != 0;
    const std::size_t primera = alta ? 0 : cifras.size() - 1;
    if (alta || baja) partes.push_back({columna + primera, std::size_t{alta} + std::size_t{baja}, realce::distinto});
  }

  std::vector<diferencia> lista_;
  tramo leido_;
};

}  // namespace

volcado::volcado(std::vector<std::uint8_t> bytes, tramo conocido) : bytes_(std::move(bytes)), conocido_(conocido) {
  bytes_.resize(bytes_.size() / bytes_por_fila * bytes_por_fila);
}

std::string volcado::texto(std::size_t indice) const {
  const std::size_t dir = indice * bytes_por_fila;
  std::string fila, caracteres;
  anadir_hex(fila, static_cast<std::uint32_t>(dir), 6);
  fila += ' ';
  for (std::size_t i = dir; i < dir + bytes_por_fila; ++i) {
    fila += ' ';
    anadir_hex(fila, bytes_[i], 2);
    caracteres += visible(bytes_[i]);
  }
  return fila + "  " + caracteres;
}

std::vector<parte_realzada> volcado::realces(std::size_t indice) const {
  const auto principio = static_cast<std::int32_t>(indice * bytes_por_fila);
  const tramo propia{principio, principio + static_cast<std::int32_t>(bytes_por_fila)};
  if (propia.hasta <= conocido_.desde || propia.desde >= conocido_.hasta) {
    return {{0, caracteres_por_fila, realce::ignorado}};
  }
  const auto fila = bytes().subspan(indice * bytes_por_fila, bytes_por_fila);
  std::vector<parte_realzada> cifras, caracteres;
  for (auto i = std::ranges::find(fila, borrado); i != fila.end();) {
    const auto fin = std::find_if(i, fila.end(), [](std::uint8_t byte) { return byte != borrado; });
    const auto lugar = static_cast<std::size_t>(i - fila.begin()), cuantos = static_cast<std::size_t>(fin - i);
    const auto partes = partes_en_fila(tramo_de(indice * bytes_por_fila + lugar, cuantos), indice, realce::tenue);
    cifras.push_back(partes.front());
    caracteres.push_back(partes.back());
    i = std::find(fin, fila.end(), borrado);
  }
  cifras.insert(cifras.end(), caracteres.begin(), caracteres.end());
  return cifras;
}

std::size_t volcado::primera_conocida() const {
  const auto primera = static_cast<std::size_t>(conocido_.desde) / bytes_por_fila;
  return conocido_.vacio() || primera >= cuantas() ? 0 : primera;
}

std::vector<parte_realzada> partes_en_fila(tramo cual, std::size_t indice, realce como) {
  const std::size_t primero = indice * bytes_por_fila;
  const std::size_t desde = std::max(static_cast<std::size_t>(cual.desde), primero);
  const std::size_t fin = std::min(static_cast<std::size_t>(cual.hasta), primero + bytes_por_fila);
  if (desde >= fin) return {};
  const std::size_t lugar = desde - primero, cuantos = fin - desde;
  return {{columna_bytes + lugar * paso_bytes, cuantos * paso_bytes - 1, como},
          {columna_caracteres + lugar, cuantos, como}};
}

std::shared_ptr<const volcado> filas_de_volcado(const std::vector<std::uint8_t>& buffer, std::int64_t cuantos,
                                                tramo conocido) {
  const auto tope = std::clamp<std::int64_t>(cuantos, 0, static_cast<std::int64_t>(buffer.size()));
  return std::make_shared<volcado>(std::vector(buffer.begin(), buffer.begin() + tope), conocido);
}

std::shared_ptr<const diferencias> filas_de_comparacion(const Variables_grab& v, std::int32_t tope, tramo leido) {
  const auto cuantas = static_cast<std::size_t>(std::clamp<std::int64_t>(std::int64_t{tope} + 1, 0, total_celdas));
  const auto difiere = [&v](std::size_t i) { return v.buffer_entrada[i] != v.buffer_salida[i]; };
  std::size_t todas = 0;
  for (std::size_t i = 0; i < cuantas; ++i) todas += difiere(i) ? 1 : 0;
  std::vector<diferencia> lista;
  lista.reserve(todas);
  for (std::size_t i = 0; i < cuantas; ++i) {
    if (difiere(i)) lista.push_back({static_cast<std::int32_t>(i), v.buffer_entrada[i], v.buffer_salida[i]});
  }
  return std::make_shared<comparacion>(std::move(lista), leido);
}

}  // namespace morvane
