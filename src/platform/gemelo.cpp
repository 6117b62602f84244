#include "platform/gemelo.h"

#include <algorithm>

namespace morvane {

namespace {

/// Passes that a line which has something gets to be read before the clock moves on all the same.
constexpr int pasadas_para_leer = 100;

}  // namespace

std::string gemelo::hora() const {
  const auto segundos = std::chrono::duration_cast<std::chrono::seconds>(ahora_).count();
  const auto dos = [](long long n) { return (n < 10 ? "0" : "") + std::to_string(n); };
  return dos(segundos / 3600 % 24) + ":" + dos(segundos / 60 % 60) + ":" + dos(segundos % 60);
}

std::string gemelo::ShowOpen(const CommonDialog& /*dialogo*/) {
  if (rutas_.empty()) return eleccion ? eleccion() : std::string();
  std::string ruta = std::move(rutas_.front());
  rutas_.pop_front();
  return ruta;
}

void gemelo::terminar() {
  throw fin_de_programa{};
}

void gemelo::responder(respuesta_caja respuesta, std::function<void()> mientras) {
  respuestas_.push_back({respuesta, std::move(mientras)});
}

void gemelo::programar(instante cuando, std::function<void()> accion) {
  acciones_.emplace(cuando, std::move(accion));
}

respuesta_caja gemelo::mostrar(const caja& mensaje, const std::string& explicacion) {
  cajas.push_back(mensaje);
  explicaciones.push_back(explicacion);
  ahora_ += tiempo_de_caja;
  if (respuestas_.empty() && usuario) return usuario(mensaje);
  const bool para_otra = respuestas_.empty() || respuestas_.front().respuesta >= vbCancel;
  if (mensaje.teclas == botones::Aceptar && para_otra) return vbOK;
  if (respuestas_.empty()) {
    throw caja_inesperada("no answer stands ready for: " + mensaje.texto);
  }
  const contestacion siguiente = std::move(respuestas_.front());
  respuestas_.pop_front();
  if (siguiente.mientras) siguiente.mientras();
  return siguiente.respuesta;
}

std::optional<instante> gemelo::proximo() const {
  std::optional<instante> primero = proximo_plazo();
  const auto mirar = [&primero, this](std::optional<instante> otro) {
    if (otro && *otro > ahora_ && (!primero || *otro < *primero)) primero = otro;
  };
  for (const pendiente* p : vigilados_) mirar(p->proximo());
  if (!acciones_.empty()) mirar(acciones_.begin()->first);
  return primero;
}

bool gemelo::algo_espera() const {
  return std::any_of(vigilados_.begin(), vigilados_.end(), [this](const pendiente* p) {
    const auto cuando = p->proximo();
    return cuando && *cuando <= ahora_;
  });
}

bool gemelo::ejecutar_acciones() {
  bool alguna = false;
  while (!acciones_.empty() && acciones_.begin()->first <= ahora_) {
    const auto accion = std::move(acciones_.begin()->second);
    acciones_.erase(acciones_.begin());
    alguna = true;
    accion();
  }
  return alguna;
}

void gemelo::eventos() {
  ++pasadas;
  if (en_cada_pasada) en_cada_pasada();
  if (ejecutar_acciones()) {
    vacias_ = 0;
    return;
  }
  // A line that has something now is read before the clock moves on, but not if nobody ever reads it.
  if (algo_espera() && vacias_ < pasadas_para_leer) {
    ++vacias_;
    return;
  }
  const auto siguiente = proximo();
  if (!siguiente) {
    if (++vacias_ > paciencia) throw colgado("passes go on and nothing is ever due");
    return;
  }
  ahora_ = *siguiente;
  vacias_ = 0;
  ejecutar_acciones();
}

}  // namespace morvane
