#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>

#include "bridge/azar.h"
#include "bridge/extremo.h"

namespace puente {

/// How a USB adapter hands what has come over the line to the host. Nothing is handed over but at the edge of a frame
/// of the bus, 1 ms; docs/performance.md says where the figures come from.
struct modelo_adaptador {
  std::string_view nombre;
  /// Characters that are handed over without waiting any longer.
  std::size_t paquete = 64;
  /// The clock at whose ticks the rest is handed over; it starts anew when something is. 0 if there is none.
  instante reloj{0};
  /// Without a clock: how long the line must have been silent.
  instante silencio{0};
};

/// The adapters that are modelled: "ftdi", "ftdi-1ms", "ch340", "cp2102", "acm".
std::optional<modelo_adaptador> adaptador_de(std::string_view nombre);
/// One of them by lot, or, as often as not, none.
std::optional<modelo_adaptador> adaptador_al_azar(azar& suerte);

/// A board behind a USB adapter: what comes from it is held back as the adapter does. What goes to it goes at once.
class adaptador final : public extremo {
 public:
  /// `detras` must outlive it. Without a model everything passes as it comes.
  explicit adaptador(extremo& detras, std::optional<modelo_adaptador> modelo = std::nullopt)
      : detras_(detras), modelo_(modelo) {}

  /// Takes another model; what is held back is lost.
  void enchufar(std::optional<modelo_adaptador> modelo);
  /// What is held back is lost.
  void vaciar();

  void entra(std::string_view datos, instante ahora) override;
  std::optional<instante> proximo() const override;
  std::string sale(instante ahora, std::size_t cuantos = SIZE_MAX) override;
  std::size_t hueco() const override { return detras_.hueco(); }
  bool colgada() const override { return detras_.colgada(); }
  void abierta(instante ahora) override { detras_.abierta(ahora); }

 private:
  struct caracter {
    char c;
    instante llega;
  };
  void avanzar(instante ahora);
  void retener(std::string_view datos, instante cuando);
  void entregar(instante cuando);
  std::optional<instante> plazo() const;

  extremo& detras_;
  std::optional<modelo_adaptador> modelo_;
  std::string retenidos_;
  std::deque<caracter> entregados_;
  /// When the first and the last of those that are held back came, and the clock's last tick.
  instante primero_{0}, ultimo_{0}, tic_{0};
};

}  // namespace puente
