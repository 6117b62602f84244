#pragma once

#include <cstdlib>
#include <string>

#include "platform/plataforma.h"
#include "platform/sistema.h"

namespace medidas {

/// A desktop on which nothing ever happens. Boxes are answered at once, and a pass takes 10 µs of a clock of its own.
class plataforma_muda final : public morvane::plataforma {
 public:
  morvane::instante ahora() const override { return ahora_; }
  std::string hora() const override { return "00:00:00"; }
  std::string ShowOpen(const morvane::CommonDialog& /*dialogo*/) override { return {}; }
  [[noreturn]] void terminar() override { std::_Exit(1); }
  morvane::anfitrion& maquina() override { return maquina_; }

  /// The last box shown.
  morvane::caja ultima;

 protected:
  void eventos() override { ahora_ += morvane::instante{10}; }
  morvane::respuesta_caja mostrar(const morvane::caja& mensaje, const std::string& /*explicacion*/) override {
    ultima = mensaje;
    return morvane::vbOK;
  }

 private:
  morvane::anfitrion_del_sistema maquina_;
  morvane::instante ahora_{0};
};

}  // namespace medidas
