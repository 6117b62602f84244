#include "serial/mscomm.h"

#include <algorithm>
#include <cstring>

#include "serial/tramas.h"

namespace morvane {

namespace {

/// Reads of the line that one dropping of input makes at most, so that it ends against a board that never stops.
constexpr int lecturas_al_descartar = 16;

}  // namespace

MSComm::MSComm(plataforma& plat, transporte& linea) : plat_(plat), linea_(linea) {
  plat_.registrar(*this);
}

MSComm::~MSComm() {
  PortOpen(false);
  plat_.retirar(*this);
}

bool MSComm::CommPort(int numero) {
  if (!linea_.existe(numero)) return false;
  puerto_ = numero;
  return true;
}

bool MSComm::Settings(std::string_view texto) {
  const auto leidos = leer_parametros(texto);
  if (!leidos) return false;
  parametros_ = *leidos;
  return true;
}

bool MSComm::PortOpen(bool abrir) {
  if (abrir == abierto_) return true;
  vaciar();
  if (abrir) return abierto_ = linea_.abrir(puerto_, parametros_);
  abierto_ = false;
  linea_.cerrar();
  return true;
}

void MSComm::Output(std::string_view datos) {
  desbordado_ = false;
  if (abierto_) linea_.escribir(datos);
}

std::string_view MSComm::Input() {
  const std::size_t largo = input_len_ == 0 ? pendientes() : std::min<std::size_t>(input_len_, pendientes());
  const std::string_view texto(buffer_.data() + inicio_, largo);
  inicio_ += largo;
  return texto;
}

bool MSComm::trama_entera() const {
  const std::string_view texto(buffer_.data() + inicio_, pendientes());
  const std::size_t stx = texto.find(STX);
  return stx != std::string_view::npos && texto.find(ETX, stx) != std::string_view::npos;
}

void MSComm::vaciar() {
  inicio_ = fin_ = tras_etx_ = forzado_ = 0;
  desbordado_ = false;
}

void MSComm::descartar_entrada() {
  vaciar();
  if (!abierto_) return;
  for (int i = 0; i < lecturas_al_descartar; ++i) {
    const std::size_t leidos = linea_.leer(buffer_);
    recibidos_ += leidos;
    if (leidos == 0) return;
  }
}

void MSComm::atender() {
  if (!abierto_) return;
  leer_linea();
  entregar();
}

void MSComm::leer_linea() {
  if (inicio_ > 0) {
    if (inicio_ < fin_) std::memmove(buffer_.data(), buffer_.data() + inicio_, pendientes());
    tras_etx_ -= std::min(tras_etx_, inicio_);
    forzado_ -= std::min(forzado_, inicio_);
    fin_ -= inicio_;
    inicio_ = 0;
  }
  const std::span<char> sitio = std::span(buffer_).subspan(fin_);
  const std::size_t leidos = linea_.leer(sitio);
  const std::size_t etx = std::string_view(sitio.data(), leidos).rfind(ETX);
  if (etx != std::string_view::npos) tras_etx_ = fin_ + etx + 1;
  fin_ += leidos;
  recibidos_ += leidos;
  if (fin_ == buffer_.size() && modo_caracter()) {
    forzado_ = fin_;
    desbordado_ = true;
  }
}

std::size_t MSComm::disponibles() const {
  const std::size_t hasta = modo_caracter() ? std::max(tras_etx_, forzado_) : fin_;
  return hasta > inicio_ ? hasta - inicio_ : 0;
}

void MSComm::entregar() {
  while (abierto_ && OnComm && disponibles() >= static_cast<std::size_t>(std::max(r_threshold_, 1))) {
    const std::size_t antes = pendientes();
    comm_event_ = comEvReceive;
    OnComm();
    comm_event_ = 0;
    if (pendientes() >= antes) return;
  }
}

}  // namespace morvane
