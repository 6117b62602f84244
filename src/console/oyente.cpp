#include "oyente.h"

namespace morvane::console {

void oyente::empieza(job::fase cual, std::int64_t total) {
  cerrando_ = cual == job::fase::cerrar;
  cara_.empieza(cual, total);
}

void oyente::ocurre(job::suceso que, std::string_view comando, std::int32_t direccion, char codigo) {
  cara_.ocurre(que, comando, direccion, codigo);
}

void oyente::traza(char direccion, std::string_view crudo, job::tiempo cuando) {
  if (traza_ != nullptr) traza_->anotar(direccion, crudo, cuando);
  if (cerrando_) return;
  if (direccion == '<') return sin_respuesta_.clear();
  // STX in front, two digits and ETX behind.
  constexpr std::size_t delante = 1, detras = 3;
  ultimo_.assign(crudo.substr(delante, crudo.size() - delante - detras));
  if (sin_respuesta_.empty()) sin_respuesta_ = ultimo_;
}

}  // namespace morvane::console
