#include "platform/reloj.h"

#include "platform/plataforma.h"

namespace morvane {

reloj::reloj(plataforma& plat, milisegundos plazo) : plat_(plat), plazo_(plazo) {
  plat_.relojes_.push_back(this);
}

reloj::~reloj() {
  // Those of a wait come and go in order.
  if (plat_.relojes_.back() == this) {
    plat_.relojes_.pop_back();
  } else {
    std::erase(plat_.relojes_, this);
  }
}

void reloj::arrancar() {
  inicio_ = plat_.ahora();
  en_marcha_ = true;
}

bool reloj::vencido() const {
  return en_marcha_ && plat_.ahora() >= vence();
}

void Timer::Enabled(bool si) {
  if (!si) return parar();
  if (!en_marcha()) arrancar();
}

void Timer::tocar() {
  arrancar();
  if (OnTimer) OnTimer();
}

}  // namespace morvane
