#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "apoyo/placa_lejos.h"
#include "job/ordenes.h"
#include "platform/gemelo.h"
#include "serial/transporte_memoria.h"

namespace apoyo {

/// A job's world on the twin's clock: waits jump to the next character, or to their end.
class mundo_de_guion final : public morvane::job::entorno {
 public:
  mundo_de_guion(morvane::gemelo& plat, const placa_lejos& lejos) : plat_(plat), lejos_(lejos) {}

  morvane::job::tiempo ahora() override { return plat_.ahora(); }
  void esperar(morvane::job::tiempo cuanto) override {
    if (plat_.ahora() > std::chrono::hours{6}) throw morvane::colgado("a job without end");
    const auto cuando = lejos_.proximo().value_or(morvane::instante::max());
    plat_.pasar(std::min(cuanto, std::max(cuando - plat_.ahora(), morvane::job::tiempo{1})));
  }
  void pausa(morvane::job::tiempo cuanto) override { plat_.pasar(cuanto); }
  int parada() override {
    if (++miradas > demasiadas) throw morvane::colgado("a job without end");
    return miradas >= para_del_todo ? 2 : miradas >= para ? 1 : 0;
  }

  /// At which question about it a stop of which level is wanted.
  std::uint64_t miradas = 0, para = UINT64_MAX, para_del_todo = UINT64_MAX;

 private:
  static constexpr std::uint64_t demasiadas = 10'000'000;

  morvane::gemelo& plat_;
  const placa_lejos& lejos_;
};

/// Counts what an observer is told.
struct cuenta_sucesos final : morvane::job::observador {
  void ocurre(morvane::job::suceso que, std::string_view, std::int32_t, char) override { ++de[static_cast<int>(que)]; }
  void traza(char direccion, std::string_view crudo, morvane::job::tiempo) override {
    (direccion == '>' ? enviado : direccion == '<' ? recibido : sucedido) += crudo;
  }
  int cuantos(morvane::job::suceso que) const { return de[static_cast<int>(que)]; }
  int de[16]{};
  std::string enviado, recibido, sucedido;
};

/// A board in memory with an open line to it.
struct banco_job {
  explicit banco_job(unsigned baudios = 0) : lejos(baudios), p{linea, mundo, &oye, static_cast<int>(baudios)} {
    linea.abrir(1, {});
  }

  std::span<std::uint8_t> flash() { return lejos.chip.flash(); }
  /// The chip holds exactly `que`.
  bool tiene(const morvane::job::objetivo& que) { return std::ranges::equal(flash(), que.bytes); }
  void llenar(const morvane::job::objetivo& que) { std::ranges::copy(que.bytes, flash().begin()); }

  morvane::gemelo plat;
  placa_lejos lejos;
  morvane::transporte_memoria linea{plat, lejos};
  mundo_de_guion mundo{plat, lejos};
  cuenta_sucesos oye;
  morvane::job::puesto p;
};

/// An image with `datos` from `dir`, as a loader would leave it.
inline void poner(morvane::Variables_grab& v, std::int32_t dir, const std::vector<std::uint8_t>& datos) {
  for (const std::uint8_t b : datos) morvane::poner_byte(v, dir++, b);
}
inline morvane::Variables_grab imagen_vacia() {
  morvane::Variables_grab v;
  morvane::limpiar_buffer_salida(v);
  return v;
}
/// Bytes that differ from each other and from FF.
inline std::vector<std::uint8_t> ruidosos(std::size_t n, std::uint32_t semilla = 7) {
  std::vector<std::uint8_t> d(n);
  for (auto& b : d) {
    semilla = semilla * 1664525 + 1013904223;
    b = static_cast<std::uint8_t>((semilla >> 24) % 255);
  }
  return d;
}

}  // namespace apoyo
