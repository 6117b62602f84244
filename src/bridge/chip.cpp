#include "bridge/chip.h"

#include <algorithm>

namespace puente {

chip::chip() : flash_(tamano, 0xFF) {}

bool chip::palabra_de_proteccion() const {
  return std::equal(palabra.begin(), palabra.end(), flash_.begin() + dir_proteccion);
}

void chip::pasa(std::chrono::microseconds ahora) {
  ahora_ = ahora;
  if (!borra_desde_) return;
  const auto hecho = std::clamp(ahora - *borra_desde_, std::chrono::microseconds{0}, dura_);
  if (hecho == dura_) borra_desde_.reset();
  seguir_borrado(hecho.count(), dura_.count());
}

void chip::abrir() {
  const auto sigue = borra_desde_;
  reiniciar();
  borra_desde_ = sigue;
  protegido_ = protegido_ && (!sigue || borrado_fallido_);
  pegar_celdas();
  abierto_ = true;
}

void chip::cerrar() {
  abierto_ = false;
}

void chip::reiniciar() {
  abierto_ = permiso_ = configurado_ = error_ = false;
  sondeos_ = 0;
  borra_desde_.reset();
  protegido_ = palabra_de_proteccion();
}

/// What stands against any command but a status reading.
chip::resultado chip::impedimento() const {
  if (!abierto_) return resultado::inactivo;
  return borrando() ? resultado::ocupado : resultado::hecho;
}

chip::resultado chip::permitir_escritura() {
  const resultado r = impedimento();
  if (r == resultado::hecho) permiso_ = !modo.falla_permiso;
  return r;
}

chip::resultado chip::escribir_config(std::uint8_t valor) {
  const resultado r = impedimento();
  if (r != resultado::hecho) return r;
  if (!permiso_) return resultado::sin_permiso;
  permiso_ = false;
  configurado_ = valor != 0 && !modo.falla_config;
  return resultado::hecho;
}

chip::resultado chip::borrar() {
  const resultado r = impedimento();
  if (r != resultado::hecho) return r;
  if (!permiso_ || !configurado_) return resultado::sin_permiso;
  permiso_ = error_ = false;
  borrado_fallido_ = modo.falla_borrado;
  protegido_ = protegido_ && borrado_fallido_;
  dura_ = modo.borrado_dura;
  if (dura_.count() > 0) {
    borra_desde_ = ahora_;
    return resultado::hecho;
  }
  sondeos_ = sondeos_totales_ = std::max(modo.sondeos_de_borrado, 0);
  if (sondeos_ == 0) avanzar_borrado();
  return resultado::hecho;
}

void chip::avanzar_borrado() {
  if (sondeos_ > 0) --sondeos_;
  seguir_borrado(sondeos_totales_ - sondeos_, sondeos_totales_);
}

void chip::seguir_borrado(std::int64_t hecho, std::int64_t total) {
  if (hecho == total) error_ = borrado_fallido_;
  if (borrado_fallido_) return;
  const std::int64_t fin = hecho == total ? tamano : tamano * hecho / total;
  std::fill(flash_.begin(), flash_.begin() + fin, 0xFF);
  pegar_celdas();
  ++cambios_;
}

void chip::pegar_celdas() {
  if (modo.celda_a_0 && *modo.celda_a_0 < tamano) flash_[*modo.celda_a_0] &= 0xFE;
  if (modo.celda_a_1 && *modo.celda_a_1 < tamano) flash_[*modo.celda_a_1] |= 0x01;
}

chip::resultado chip::grabar(std::uint32_t dir, std::span<const std::uint8_t, 4> datos) {
  const resultado r = impedimento();
  if (r != resultado::hecho) return r;
  if (protegido_) return resultado::protegido;
  if (dir >= tamano || dir % 4 != 0) return resultado::fuera;
  if (!permiso_ || !configurado_) return resultado::sin_permiso;
  permiso_ = error_ = false;
  for (std::size_t i = 0; i < datos.size(); ++i) flash_[dir + i] &= datos[i];
  pegar_celdas();
  ++cambios_;
  return resultado::hecho;
}

chip::resultado chip::leer(std::uint32_t dir, std::span<std::uint8_t> destino) const {
  const resultado r = impedimento();
  if (r != resultado::hecho) return r;
  if (protegido_) return resultado::protegido;
  const std::size_t desde = std::min<std::size_t>(dir, tamano);
  const std::size_t hay = std::min(destino.size(), tamano - desde);
  std::copy_n(flash_.begin() + static_cast<std::ptrdiff_t>(desde), hay, destino.begin());
  std::fill(destino.begin() + static_cast<std::ptrdiff_t>(hay), destino.end(), 0xFF);
  return resultado::hecho;
}

std::uint8_t chip::estado() {
  const bool ocupado = borrando();
  if (sondeos_ > 0) avanzar_borrado();
  if (modo.mudo) return 0xFF;
  // The reading that ends an erase still shows it running, so its verdict comes with the next one.
  return static_cast<std::uint8_t>((ocupado ? 0x01 : 0) | (permiso_ ? 0x02 : 0) | (configurado_ ? 0x20 : 0) |
                                   (error_ && !ocupado ? 0x40 : 0) | (protegido_ ? 0x80 : 0));
}

}  // namespace puente
