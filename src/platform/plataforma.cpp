#include "platform/plataforma.h"

#include <algorithm>

namespace morvane {

void plataforma::DoEvents() {
  eventos();
  if (caja_abierta()) return;
  // By index: a handler may register or retire others while it runs.
  for (std::size_t i = 0; i < fuentes_.size(); ++i) fuentes_[i]->atender();
  tocar_relojes();
}

respuesta_caja plataforma::MsgBox(const caja& mensaje, const std::string& explicacion) {
  struct cuenta {
    explicit cuenta(plataforma& p) : p_(p) {
      if (p_.cajas_abiertas_++ == 0) p_.caja_desde_ = p_.ahora();
    }
    ~cuenta() {
      if (--p_.cajas_abiertas_ == 0) p_.en_cajas_ += p_.ahora() - p_.caja_desde_;
    }
    cuenta(const cuenta&) = delete;
    cuenta& operator=(const cuenta&) = delete;
    plataforma& p_;
  };
  respuesta_caja respuesta = vbNinguna;
  {
    const cuenta abierta(*this);
    respuesta = mostrar(mensaje, explicacion);
  }
  reiniciar_relojes();
  return respuesta;
}

instante plataforma::ahora_sin_cajas() const {
  return (caja_abierta() ? caja_desde_ : ahora()) - en_cajas_;
}

void plataforma::registrar(fuente_eventos& fuente) {
  fuentes_.push_back(&fuente);
}

void plataforma::retirar(fuente_eventos& fuente) {
  std::erase(fuentes_, &fuente);
}

std::optional<instante> plataforma::proximo_plazo() const {
  std::optional<instante> primero;
  for (const reloj* r : relojes_) {
    const bool pendiente = r->en_marcha() && !r->vencido();
    if (pendiente && (!primero || r->vence() < *primero)) primero = r->vence();
  }
  return primero;
}

void plataforma::tocar_relojes() {
  instante visto = relojes_.empty() ? instante{0} : ahora();
  for (std::size_t i = 0; i < relojes_.size(); ++i) {
    reloj& uno = *relojes_[i];
    if (!uno.en_marcha() || visto < uno.vence()) continue;
    uno.tocar();
    // Whatever it did may have taken its time.
    visto = ahora();
  }
}

void plataforma::reiniciar_relojes() {
  for (reloj* r : relojes_) {
    if (r->en_marcha()) r->arrancar();
  }
}

}  // namespace morvane
