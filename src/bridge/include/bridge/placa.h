#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <random>
#include <string>
#include <string_view>

#include "bridge/chip.h"
#include "bridge/extremo.h"
#include "bridge/faltas.h"

namespace puente {

/// One direction's pace: how long a character takes on the line. 0 stands for a line without a pace.
struct ritmo {
  /// Bits a second; a character has ten.
  unsigned baudios = 0;
  instante caracteres(std::uint64_t cuantos) const {
    return baudios == 0 ? instante{0} : instante{cuantos * 10'000'000ULL / baudios};
  }
};

/// The bridge board: takes frames off a line, carries them to the chip and answers, on a clock that its user gives.
/// Characters take their time in both directions; a command is carried out when its ETX has arrived.
///
/// No input makes it hold more than `capacidad` characters a direction: what comes in beyond that, and replies that
/// nobody takes, are lost as on a line without flow control.
///
/// A frame is STX, a command, two checksum digits, ETX. What stands outside is passed over, and an STX begins anew.
/// Refusals, in the order in which they are looked for: '2' nothing on this board is that long, '4' too short for a
/// checksum, '3' wrong checksum, '8' a letter that is kept free, '6' no command, '2' and '4' wrong length for its
/// command, '5' a field that is no upper-case hexadecimal, '7' chip not open; then, as the
/// chip finds it, '9' a place or a count out of range, '6' not now (erase running, protected, write not enabled).
class placa : public extremo {
 public:
  static constexpr std::size_t capacidad = 0x10000;

  /// `direccion` is '>' for a frame that came in, '<' for one that went out with the noise around it; `cuando` is its
  /// last character's arrival, which for one that went out is still to come.
  using testigo = std::function<void(char direccion, std::string_view trama, instante cuando)>;

  placa(chip& c, ritmo paso, faltas f = {});

  /// `datos` were put on the line towards the board at `ahora`, which never goes back.
  void entra(std::string_view datos, instante ahora) override;
  /// When the next character arrives at either end, if any is under way.
  std::optional<instante> proximo() const override;
  /// When the last character that is under way to the far end arrives there, if any is.
  std::optional<instante> ultimo() const;
  /// Takes at most `cuantos` of the characters that have arrived at the far end by `ahora`.
  std::string sale(instante ahora, std::size_t cuantos = SIZE_MAX) override;
  /// How many characters `entra` takes just now without losing one.
  std::size_t hueco() const override { return capacidad - hacia_placa_.size(); }
  /// The board has hung up; nothing works any more until `reparar`.
  bool colgada() const override { return colgada_; }
  /// The far end has opened the line.
  void abierta(instante ahora) override;
  /// What was on its way in both directions is lost, as when the far end closes the line.
  void vaciar();
  /// From now on it does wrong what `f` says; frames, characters and the lots count anew from here.
  void averiar(const faltas& f);
  /// Does nothing wrong any more; what was on its way is lost. The chip stays as it is.
  void reparar();

  /// Frames received so far, or since `averiar`, well-formed or not.
  std::uint64_t tramas() const { return tramas_; }
  /// Sees every frame, if set.
  testigo traza;
  faltas fallos;

 private:
  struct caracter {
    char c;
    instante llega;
  };

  void avanzar(instante ahora);
  void recibir(char c, instante cuando);
  void atender(instante cuando);
  void colgar();
  std::string ejecutar(std::string_view comando);
  std::string grabar(std::string_view campos);
  std::string leer(std::string_view campos) const;
  std::string examinar(std::string_view campos) const;
  void responder(std::string_view contenido, instante cuando);
  void poner(std::string_view crudo, instante cuando);
  void soltar(std::string_view crudo, instante cuando);
  std::deque<caracter>& cola_que_sigue();
  std::string ruido(unsigned cuantos);
  void balbucear(instante ahora);
  char ruidoso();

  chip& chip_;
  ritmo paso_;
  std::mt19937_64 azar_;
  std::deque<caracter> hacia_placa_;
  /// Replies, and what comes of itself meanwhile, each in the order of its times.
  std::deque<caracter> hacia_pc_, sueltos_;
  std::string trama_;
  bool en_trama_ = false;
  instante libre_placa_{0}, libre_pc_{0};
  std::uint64_t tramas_ = 0, entrados_ = 0, salidos_ = 0;
  bool balbucea_ = false;
  bool colgada_ = false;
};

/// Checksum digits as the board reckons them: the last two digits of the sum of the characters, upper case.
std::string suma(std::string_view texto);

}  // namespace puente
