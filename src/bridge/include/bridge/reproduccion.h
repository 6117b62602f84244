#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "bridge/extremo.h"

namespace puente {

/// A line of a trace, as `renglon_de_traza` writes them. `direccion` is '>', '<' or '!'.
struct renglon_leido {
  instante cuando{0};
  char direccion = '\0';
  std::string crudo;
  /// Counted from 1.
  std::size_t numero = 0;
};

struct traza_leida {
  /// In the order of their times.
  std::vector<renglon_leido> renglones;
  /// Empty, or what is wrong and in which line, in Spanish.
  std::string error;
};

/// Reads a whole trace. Blank lines are passed over. A "<" that begins no escape stands for itself.
traza_leida leer_traza(std::string_view contenido);

/// Plays a trace: expects what went to the board then, and gives what came from it, as long after that as it took then.
class reproduccion final : public extremo {
 public:
  /// `al_momento`: what came from the board comes without delay.
  reproduccion(std::vector<renglon_leido> renglones, bool al_momento);

  void entra(std::string_view datos, instante ahora) override;
  std::optional<instante> proximo() const override;
  std::string sale(instante ahora, std::size_t cuantos = SIZE_MAX) override;
  std::size_t hueco() const override { return capacidad; }
  /// Also from the moment something else has come than the trace has.
  bool colgada() const override { return colgada_ || !desacuerdo_.empty(); }
  void abierta(instante ahora) override;

  /// All of it has been played.
  bool entera() const { return cual_ == renglones_.size() && desacuerdo_.empty(); }
  /// Empty, or one Spanish line: what the trace has, what has come, and in which line.
  const std::string& desacuerdo() const { return desacuerdo_; }
  /// Empty if all was played, or one Spanish line: how far it came and what was still to come.
  std::string lo_que_falta() const;

 private:
  static constexpr std::size_t capacidad = 0x1000;

  void avanzar(instante ahora);
  bool casa_con_lo_llegado();
  instante plazo() const;
  void seguir(instante base);

  std::vector<renglon_leido> renglones_;
  bool al_momento_;
  std::size_t cual_ = 0;
  std::string llegado_, por_dar_;
  instante ultima_llegada_{0}, base_{0}, base_traza_{0};
  int aperturas_ = 0;
  bool colgada_ = false;
  std::string desacuerdo_;
};

}  // namespace puente
