#include "image/filas.h"

#include <algorithm>
#include <string>

#include "platform/texto.h"

namespace morvane {

namespace {

char visible(std::uint8_t byte) {
  return byte >= 0x20 && byte <= 0x7E ? static_cast<char>(byte) : '.';
}

class volcado final : public filas {
 public:
  explicit volcado(std::vector<std::uint8_t> bytes) : bytes_(std::move(bytes)) {}

  std::size_t cuantas() const override { return bytes_.size() / bytes_por_fila; }

  std::string texto(std::size_t indice) const override {
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

 private:
  std::vector<std::uint8_t> bytes_;
};

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
    const std::string dir = hex(static_cast<std::uint32_t>(d.dir));
    return std::string(dir.size() < 6 ? 6 - dir.size() : 0, ' ') + dir + "     " + hex(d.entrada) + "   " +
           hex(d.salida);
  }

 private:
  std::vector<diferencia> lista_;
};

}  // namespace

std::shared_ptr<const filas> filas_de_volcado(const std::vector<std::uint8_t>& buffer, std::int64_t cuantos) {
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
