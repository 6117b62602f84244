#include "bridge/adaptador.h"

#include <algorithm>
#include <array>

namespace puente {

namespace {

constexpr instante trama_usb{1'000};

constexpr std::array modelos{
    modelo_adaptador{.nombre = "ftdi", .paquete = 62, .reloj = instante{16'000}},
    modelo_adaptador{.nombre = "ftdi-1ms", .paquete = 62, .reloj = instante{1'000}},
    modelo_adaptador{.nombre = "ch340", .paquete = 32, .silencio = instante{1'000}},
    modelo_adaptador{.nombre = "cp2102", .paquete = 64, .silencio = instante{2'000}},
    modelo_adaptador{.nombre = "acm", .paquete = 64},
};

/// The first edge of a raster of `paso`, beginning at `origen`, at or behind `cuando`.
instante borde(instante origen, instante paso, instante cuando) {
  const auto pasos = (cuando - origen + paso - instante{1}) / paso;
  return origen + pasos * paso;
}

}  // namespace

std::optional<modelo_adaptador> adaptador_de(std::string_view nombre) {
  const auto cual = std::ranges::find(modelos, nombre, &modelo_adaptador::nombre);
  return cual == modelos.end() ? std::nullopt : std::optional(*cual);
}

std::optional<modelo_adaptador> adaptador_al_azar(azar& suerte) {
  if (suerte.una_de(2)) return std::nullopt;
  return modelos.at(suerte.hasta(modelos.size()));
}

void adaptador::enchufar(std::optional<modelo_adaptador> modelo) {
  modelo_ = modelo;
  vaciar();
}

void adaptador::vaciar() {
  retenidos_.clear();
  entregados_.clear();
}

void adaptador::entra(std::string_view datos, instante ahora) {
  avanzar(ahora);
  detras_.entra(datos, ahora);
}

std::optional<instante> adaptador::proximo() const {
  std::optional<instante> antes = detras_.proximo();
  const auto mirar = [&antes](instante cuando) { antes = antes ? std::min(*antes, cuando) : cuando; };
  if (const auto suyo = plazo()) mirar(*suyo);
  if (!entregados_.empty()) mirar(entregados_.front().llega);
  return antes;
}

std::string adaptador::sale(instante ahora, std::size_t cuantos) {
  if (!modelo_) return detras_.sale(ahora, cuantos);
  avanzar(ahora);
  std::string texto;
  for (; texto.size() < cuantos && !entregados_.empty() && entregados_.front().llega <= ahora;
       entregados_.pop_front()) {
    texto += entregados_.front().c;
  }
  return texto;
}

/// What comes from the board and what falls due, in the order of their times.
void adaptador::avanzar(instante ahora) {
  if (!modelo_) return;
  for (;;) {
    const auto llegada = detras_.proximo(), entrega = plazo();
    const bool toca_entregar = entrega && *entrega <= ahora && (!llegada || *entrega < *llegada);
    if (toca_entregar) {
      entregar(*entrega);
    } else if (llegada && *llegada <= ahora) {
      retener(detras_.sale(*llegada), *llegada);
    } else {
      return;
    }
  }
}

void adaptador::retener(std::string_view datos, instante cuando) {
  for (const char c : datos) {
    if (retenidos_.empty()) primero_ = cuando;
    retenidos_ += c;
    ultimo_ = cuando;
    if (retenidos_.size() == modelo_->paquete) entregar(borde(instante{0}, trama_usb, cuando));
  }
}

void adaptador::entregar(instante cuando) {
  for (const char c : retenidos_) entregados_.push_back({c, cuando});
  retenidos_.clear();
  tic_ = cuando;
}

std::optional<instante> adaptador::plazo() const {
  if (!modelo_ || retenidos_.empty()) return std::nullopt;
  if (modelo_->reloj > instante{0}) return borde(tic_, modelo_->reloj, std::max(primero_, tic_ + instante{1}));
  return borde(instante{0}, trama_usb, ultimo_ + modelo_->silencio);
}

}  // namespace puente
