#include "image/filas.h"

#include <algorithm>
#include <string>

#include "files/texto.h"

namespace morvane {

namespace {

constexpr std::uint8_t borrado = 0xFF;
/// Of a dump: the first digit of the first byte, from one byte to the next, the character of the first byte.
constexpr std::size_t columna_bytes = 8, paso_bytes = 3, columna_caracteres = 57;
/// Of a comparison: from the end of the address to the first byte, and from its end to the second one.
constexpr std::size_t hueco_entrada = 5, hueco_salida = 3;

char visible(std::uint8_t byte) {
  return byte >= 0x20 && byte <= 0x7E ? static_cast<char>(byte) : '.';
}

struct diferencia {
  std::int32_t dir;
  std::uint8_t entrada, salida;
};

class comparacion final : public filas {
 public:
  explicit comparacion(std::vector<diferencia> lista) : lista_(std::move(lista)) {}

  std::size_t cuantas() const override { return lista_.size(); }

  std::string texto(std::size_t indice) const override {
    const diferencia& d = lista_[indice];
    return direccion(d) + std::string(hueco_entrada, ' ') + hex(d.entrada) + std::string(hueco_salida, ' ') +
           hex(d.salida);
  }

  // A byte below 0x10 has one digit, which is compared with the last one of the other byte.
  std::vector<parte_realzada> realces(std::size_t indice) const override {
    const diferencia& d = lista_[indice];
    const std::string entrada = hex(d.entrada), salida = hex(d.salida);
    const std::size_t columna = direccion(d).size() + hueco_entrada;
    std::vector<parte_realzada> partes;
    realzar(partes, columna, entrada, d);
    realzar(partes, columna + entrada.size() + hueco_salida, salida, d);
    return partes;
  }

 private:
  static std::string direccion(const diferencia& d) {
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
};

}  // namespace

volcado::volcado(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {
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

std::vector<parte_realzada> partes_en_fila(tramo cual, std::size_t indice, realce como) {
  const std::size_t primero = indice * bytes_por_fila;
  const std::size_t desde = std::max(static_cast<std::size_t>(cual.desde), primero);
  const std::size_t fin = std::min(static_cast<std::size_t>(cual.hasta), primero + bytes_por_fila);
  if (desde >= fin) return {};
  const std::size_t lugar = desde - primero, cuantos = fin - desde;
  return {{columna_bytes + lugar * paso_bytes, cuantos * paso_bytes - 1, como},
          {columna_caracteres + lugar, cuantos, como}};
}

std::shared_ptr<const volcado> filas_de_volcado(const std::vector<std::uint8_t>& buffer, std::int64_t cuantos) {
  const auto tope = std::clamp<std::int64_t>(cuantos, 0, static_cast<std::int64_t>(buffer.size()));
  return std::make_shared<volcado>(std::vector(buffer.begin(), buffer.begin() + tope));
}

std::shared_ptr<const filas> filas_de_comparacion(const Variables_grab& v, std::int32_t tope) {
  const auto cuantas = static_cast<std::size_t>(std::clamp<std::int64_t>(std::int64_t{tope} + 1, 0, total_celdas));
  const auto difiere = [&v](std::size_t i) { return v.buffer_entrada[i] != v.buffer_salida[i]; };
  std::size_t todas = 0;
  for (std::size_t i = 0; i < cuantas; ++i) todas += difiere(i) ? 1 : 0;
  std::vector<diferencia> lista;
  lista.reserve(todas);
  for (std::size_t i = 0; i < cuantas; ++i) {
    if (difiere(i)) lista.push_back({static_cast<std::int32_t>(i), v.buffer_entrada[i], v.buffer_salida[i]});
  }
  return std::make_shared<comparacion>(std::move(lista));
}

}  // namespace morvane
