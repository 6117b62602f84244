#include "bridge/cronica.h"

#include "tramas.h"

namespace puente {

namespace {

/// What never ends with an ETX is told in pieces.
constexpr std::size_t maximo_renglon = 200;

}  // namespace

void cronica::pasar(char direccion, std::string_view datos, instante ahora) {
  if (datos.empty()) return;
  if (direccion != direccion_) acabar();
  direccion_ = direccion;
  for (const char c : datos) {
    crudo_ += c;
    ultimo_ = ahora;
    if (c == etx || crudo_.size() == maximo_renglon) acabar();
  }
}

void cronica::sucede(std::string_view que, instante ahora) {
  acabar();
  testigo_('!', que, ahora);
}

void cronica::acabar() {
  if (!crudo_.empty()) testigo_(direccion_, crudo_, ultimo_);
  crudo_.clear();
}

}  // namespace puente
