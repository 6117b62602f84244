#include "shell/buscador.h"

#include <algorithm>

#include "files/texto.h"

namespace morvane {

namespace {

constexpr std::size_t cifras_direccion = 6;

std::string direccion(std::size_t dir) {
  return hex(static_cast<std::uint32_t>(dir), cifras_direccion);
}

std::optional<patron> patron_de(std::string_view que, clase_busqueda como) {
  if (como == clase_busqueda::texto) return patron_de_texto(que);
  return patron_de_bytes(que);
}

std::string lo_hallado(const hallazgo& h, sentido hacia) {
  std::string donde = "En " + direccion(h.dir);
  if (!h.vuelta) return donde;
  return donde + (hacia == sentido::adelante ? ", vuelta al principio" : ", vuelta al final");
}

}  // namespace

void buscador::mirar(std::shared_ptr<const volcado> donde) {
  donde_ = std::move(donde);
  hallado_.reset();
  ultimo_.reset();
  mensaje_.clear();
}

bool buscador::fallar(std::string motivo) {
  hallado_.reset();
  ultimo_.reset();
  mensaje_ = std::move(motivo);
  return false;
}

bool buscador::ir(std::string_view texto) {
  if (!donde_ || donde_->bytes().empty()) return fallar("El buffer está vacío");
  if (texto.starts_with("0x") || texto.starts_with("0X")) texto.remove_prefix(2);
  if (texto.empty()) return fallar("Escriba una dirección");
  const bool son_cifras = std::ranges::all_of(texto, [](char c) { return digito_hex(c) >= 0; });
  if (!son_cifras || texto.size() > cifras_direccion) return fallar("Hasta seis cifras de 0 a F");
  const std::size_t dir = valor_hex(texto);
  const std::size_t ultima = donde_->bytes().size() - 1;
  if (dir > ultima) return fallar("La última dirección es " + direccion(ultima));
  hallado_ = tramo_de(dir, 1);
  ultimo_.reset();
  mensaje_.clear();
  return true;
}

bool buscador::buscar(std::string_view que, clase_busqueda como, sentido hacia, std::size_t fila) {
  const auto bytes = patron_de(que, como);
  if (!bytes) return fallar("Dos cifras de 0 a F por byte; si es un texto, elija Texto");
  if (bytes->bytes.empty()) return fallar("Escriba qué buscar");
  if (!donde_) return fallar("El buffer está vacío");
  pedido este{std::string(que), como};
  const auto donde = morvane::buscar(donde_->bytes(), *bytes, partida(hacia, fila, ultimo_ == este), hacia);
  if (!donde) return fallar("No se ha encontrado");
  hallado_ = tramo_de(donde->dir, bytes->bytes.size());
  ultimo_ = std::move(este);
  mensaje_ = lo_hallado(*donde, hacia);
  return true;
}

std::size_t buscador::partida(sentido hacia, std::size_t fila, bool continua) const {
  if (!continua || !hallado_ || hallado_->desde / bytes_por_fila != fila) return fila * bytes_por_fila;
  return hallado_->desde + (hacia == sentido::adelante ? 1 : 0);
}

}  // namespace morvane
