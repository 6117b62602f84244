#include "sesion.h"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <iostream>
#include <sstream>

#include "archivo_flash.h"
#include "bridge/traza.h"

namespace puente {

namespace {

/// Changes have settled when the flash has stood still for this long.
constexpr instante asentada = std::chrono::seconds{1};
constexpr instante nunca = instante::max();
/// A sleep ends this much before its time, and the rest is spent looking: waking up takes about as long.
constexpr instante margen{40};

}  // namespace

sesion::sesion(const opciones& o, int senales)
    : opciones_(o), senales_(senales), placa_(chip_, ritmo{o.baudios}, o.fallos), cable_(placa_, o.cable) {
  chip_.modo = o.modo;
  if (!o.flash.empty()) nueva_ = !cargar_flash(o.flash, chip_.flash());
  if (o.protegida) {
    std::copy(chip::palabra.begin(), chip::palabra.end(), chip_.flash().begin() + chip::dir_proteccion);
    nueva_ = true;
  }
  if (!o.reproducir.empty()) leer_reproduccion();
  if (!o.traza.empty()) abrir_traza();
}

void sesion::leer_reproduccion() {
  std::ifstream entrada(opciones_.reproducir, std::ios::binary);
  std::stringstream contenido;
  if (entrada) contenido << entrada.rdbuf();
  if (!entrada || !contenido) fallar("no se puede leer la traza " + opciones_.reproducir);
  traza_leida leida = leer_traza(contenido.str());
  if (!leida.error.empty()) fallar(opciones_.reproducir + ": " + leida.error);
  repite_.emplace(std::move(leida.renglones), opciones_.baudios == 0);
  lejos_ = &*repite_;
}

void sesion::abrir_traza() {
  traza_.open(opciones_.traza, std::ios::trunc);
  if (!traza_) fallar("no se puede escribir la traza en " + opciones_.traza);
  cronica_.emplace([this](char direccion, std::string_view crudo, instante cuando) {
    traza_ << renglon_de_traza(direccion, crudo, cuando) << std::endl;
  });
}

std::string sesion::queja() const {
  if (!repite_) return {};
  return repite_->desacuerdo().empty() ? repite_->lo_que_falta() : repite_->desacuerdo();
}

instante sesion::ahora() const {
  return std::chrono::duration_cast<instante>(std::chrono::steady_clock::now() - inicio_);
}

void sesion::guardar() {
  if (opciones_.flash.empty() || (!nueva_ && guardados_ == chip_.cambios())) return;
  guardar_flash(opciones_.flash, chip_.flash());
  guardados_ = chip_.cambios();
  nueva_ = false;
}

void sesion::mirar_cambios() {
  if (vistos_ != chip_.cambios()) {
    vistos_ = chip_.cambios();
    ultimo_cambio_ = ahora();
  }
  if (opciones_.flash.empty() || vistos_ == guardados_ || lejos_->proximo() || ahora() - ultimo_cambio_ < asentada)
    return;
  try {
    guardar();
  } catch (const std::exception& e) {
    std::cerr << "puente: " << e.what() << std::endl;
    // Not again before the next change, but once more at the end.
    guardados_ = vistos_;
    nueva_ = true;
  }
}

instante sesion::proximo_plazo() const {
  if (const auto proximo = lejos_->proximo()) return *proximo;
  const bool por_guardar = !opciones_.flash.empty() && vistos_ != guardados_;
  return por_guardar ? ultimo_cambio_ + asentada : nunca;
}

bool sesion::sigue_ligada() {
  std::array<char, 256> sin_uso;
  return read(STDIN_FILENO, sin_uso.data(), sin_uso.size()) > 0;
}

/// Until something comes in or is due. False when the run is to end.
bool sesion::esperar(terminal& t) {
  // A board that is full leaves what comes in to the terminal, which then holds the program back.
  const auto entrada = static_cast<short>(lejos_->hueco() > 0 ? POLLIN : 0);
  const int quien_la_liga = opciones_.ligada ? STDIN_FILENO : -1;
  std::array<pollfd, 4> fds{
      {{senales_, POLLIN, 0}, {t.fd(), entrada, 0}, {t.fd_avisos(), POLLIN, 0}, {quien_la_liga, POLLIN, 0}}};
  const instante plazo = proximo_plazo();
  const instante falta = std::max(plazo - ahora() - margen, instante{0});
  const timespec limite{falta.count() / 1'000'000, falta.count() % 1'000'000 * 1000};
  ppoll(fds.data(), fds.size(), plazo == nunca ? nullptr : &limite, nullptr);
  if ((fds[2].revents & POLLIN) != 0 && t.atender_avisos()) {
    lejos_->abierta(ahora());
    if (cronica_) cronica_->sucede("abre", ahora());
  }
  return (fds[0].revents & POLLIN) == 0 && (fds[3].revents == 0 || sigue_ligada());
}

void sesion::mirar_reproduccion() {
  if (dicho_ || !repite_ || !repite_->entera()) return;
  std::cout << "puente: la traza se ha reproducido entera" << std::endl;
  dicho_ = true;
}

void sesion::atender(terminal& t) {
  while (!lejos_->colgada() && esperar(t)) {
    const std::string datos = t.leer(lejos_->hueco());
    if (cronica_) cronica_->va(datos, ahora());
    if (!datos.empty()) lejos_->entra(datos, ahora());
    const std::string suyos = lejos_->sale(ahora());
    t.escribir(suyos);
    if (cronica_) cronica_->viene(suyos, ahora());
    mirar_cambios();
    mirar_reproduccion();
  }
  if (!cronica_) return;
  if (lejos_->colgada()) cronica_->sucede("cuelga", ahora());
  cronica_->acabar();
}

}  // namespace puente
