#pragma once

#include <algorithm>

#include "apoyo/banco_principal.h"

namespace apoyo {

using orden = void (*)(frm_principal&);

/// The program with a file of eight bytes loaded, which programming puts on the line as the frames 17 to 20.
struct banco_ordenes : banco_principal {
  void SetUp() override {
    empezar();
    abrir_archivo("ocho.s19", ocho_bytes);
  }
  void llenar(std::uint8_t byte) { std::ranges::fill(lejos.chip.flash(), byte); }
  /// Runs a command on a board that has come to rest, with faults whose frames count from the command's first one.
  /// Its question is answered with Cancel. Gives the commands that the board took.
  std::string correr(orden cual, const puente::faltas& mal = {}) {
    plat.pasar(1s);
    lejos.reparar();
    lejos.placa.averiar(mal);
    lejos.comandos.clear();
    plat.cajas.clear();
    if (!plat.usuario) plat.responder(vbCancel);
    cual(f);
    plat.olvidar_respuestas();
    EXPECT_TRUE(en_reposo());
    return lejos.flujo();
  }
  /// Lets `accion` happen once, in the first pass after the board has taken `n` more commands.
  void tras(std::size_t n, std::function<void()> accion) {
    lejos.comandos.clear();
    plat.cajas.clear();
    plat.en_cada_pasada = [this, n, accion = std::move(accion)] {
      if (lejos.comandos.size() < n) return;
      // Moved out, since it replaces the function that is running.
      const auto una_vez = std::exchange(plat.en_cada_pasada, nullptr);
      accion();
    };
  }
};

}  // namespace apoyo
