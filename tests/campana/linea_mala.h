#pragma once

#include <algorithm>
#include <deque>
#include <string>

#include "apoyo/placa_lejos.h"

namespace campana {

using morvane::instante;

/// What happens to the line between the program and the board. Frames towards the board and characters towards the
/// program count from 1, from the moment this was set; 0 means never.
struct averia {
  /// The reply to this frame comes twice.
  std::uint64_t duplicada_en = 0;
  /// A good frame that nobody asked for comes with this frame; the frame with number 0 is the opening of the line.
  std::uint64_t suelta_en = UINT64_MAX;
  /// Noise behind the reply to each frame.
  bool ruido_detras = false;
  /// A RESET that answers no command, this long after this frame; the chip starts anew.
  std::uint64_t reset_en = 0;
  instante reset_tras{0};
  /// This character towards the program is changed, or lost; the same towards the board.
  std::uint64_t altera = 0, pierde = 0, altera_ida = 0, pierde_ida = 0;
  /// The device vanishes with this frame; the board loses its power and starts anew with it.
  std::uint64_t cuelga_en = 0, rearranca_en = 0;
  /// A cell of the flash with a bit that never goes to 1, or never to 0.
  std::uint32_t celda_baja = UINT32_MAX, celda_alta = UINT32_MAX;
};

/// The board behind a line that spoils what it carries.
class linea_mala final : public morvane::extremo {
 public:
  void estropear(const averia& nueva) {
    mal = nueva;
    tramas_ = caracteres_ = caracteres_ida_ = 0;
  }
  /// Ends all that is wrong and lets what is under way arrive nowhere.
  void reparar(instante ahora) {
    estropear({});
    cuelga_ = false;
    cola_.clear();
    lejos.placa.fallos = {};
    lejos.placa.vaciar();
    lejos.placa.sale(ahora);
  }

  void recibir(std::string_view datos, instante ahora) override {
    std::string texto;
    for (char c : datos) {
      ++caracteres_ida_;
      if (caracteres_ida_ == mal.pierde_ida) continue;
      if (caracteres_ida_ == mal.altera_ida) c ^= 0x11;
      texto += c;
    }
    if (!texto.empty() && texto.back() == '\x03') trama(ahora);
    if (!cuelga_) lejos.recibir(texto, ahora);
    limitar();
  }
  std::string entregar(std::size_t cuantos, instante ahora) override {
    limitar();
    pasar(lejos.entregar(SIZE_MAX, ahora), ahora);
    std::string texto;
    while (texto.size() < cuantos && !cola_.empty() && cola_.front().cuando <= ahora) {
      texto += cola_.front().c;
      cola_.pop_front();
    }
    return texto;
  }
  std::optional<instante> proximo() const override {
    const auto suyo = lejos.proximo();
    if (cola_.empty()) return suyo;
    return suyo ? std::min(*suyo, cola_.front().cuando) : cola_.front().cuando;
  }
  bool colgado() const override { return cuelga_; }
  void abierta() override {
    if (al_abrir) al_abrir();
    if (mal.suelta_en == 0) poner(respuesta_suelta, instante{0});
  }

  /// True if something is still to come later than `cuando`.
  bool debe_algo_tras(instante cuando) const {
    const auto suyo = lejos.placa.ultimo();
    return (suyo && *suyo > cuando) || (!cola_.empty() && cola_.back().cuando > cuando);
  }

  apoyo::placa_lejos lejos;
  averia mal;
  std::function<void()> al_abrir;

 private:
  static constexpr const char* respuesta_suelta =
      "\x02"
      "030\x03";
  struct caracter {
    char c;
    instante cuando;
  };

  void poner(std::string_view texto, instante cuando) {
    for (const char c : texto) cola_.push_back({c, cuando});
    std::ranges::stable_sort(cola_, {}, &caracter::cuando);
  }
  void trama(instante ahora) {
    ++tramas_;
    if (tramas_ == mal.suelta_en) poner(respuesta_suelta, ahora);
    if (tramas_ == mal.reset_en) {
      lejos.chip.reiniciar();
      poner(
          "\x02"
          "1RESETB4\x03",
          ahora + mal.reset_tras);
    }
    if (tramas_ == mal.rearranca_en) {
      lejos.chip.reiniciar();
      lejos.placa.vaciar();
    }
    if (tramas_ != mal.cuelga_en) return;
    cuelga_ = true;
    lejos.chip.reiniciar();
  }
  /// Carries what the board has sent on to the program.
  void pasar(const std::string& datos, instante ahora) {
    for (char c : datos) {
      ++caracteres_;
      if (caracteres_ == mal.pierde) continue;
      if (caracteres_ == mal.altera) c ^= 0x11;
      cola_.push_back({c, ahora});
      if (c == '\x02') ultima_.clear();
      ultima_ += c;
      if (c != '\x03') continue;
      if (tramas_ == mal.duplicada_en) {
        mal.duplicada_en = 0;
        poner(ultima_, ahora);
      }
      if (mal.ruido_detras)
        poner(
            "zz\xF0"
            "7",
            ahora);
    }
  }
  void limitar() {
    if (mal.celda_baja < puente::chip::tamano) lejos.chip.flash()[mal.celda_baja] &= 0xFE;
    if (mal.celda_alta < puente::chip::tamano) lejos.chip.flash()[mal.celda_alta] |= 0x01;
  }

  std::deque<caracter> cola_;
  std::string ultima_;
  std::uint64_t tramas_ = 0, caracteres_ = 0, caracteres_ida_ = 0;
  bool cuelga_ = false;
};

}  // namespace campana
