#pragma once

#include <map>
#include <memory>
#include <string>

#include "apoyo/carpeta.h"
#include "apoyo/placa_lejos.h"
#include "bridge/azar.h"
#include "controles.h"
#include "ficheros.h"
#include "oraculo.h"
#include "platform/gemelo.h"

namespace campana {

/// What has been seen in all worlds so far.
struct cuenta {
  std::uint64_t operaciones = 0, clics_dentro = 0, cierres = 0, muertes = 0;
  /// Each kind of fault, gesture and box.
  std::map<std::string, std::uint64_t> de;
};

/// Stands in for a kill at any moment.
struct muerto {};

/// One bench: a directory, a board with its chip, a bad line, a user who clicks at random, and the program, which is
/// started anew whenever it has ended. Everything follows from the seed.
class mundo {
 public:
  mundo(std::uint64_t semilla, cuenta& c);
  ~mundo();
  mundo(const mundo&) = delete;
  mundo& operator=(const mundo&) = delete;

  /// One operation. False if something was wrong, which `informe` then tells.
  bool operar();
  std::string informe() const;

 private:
  struct programa {
    explicit programa(mundo& m);
    morvane::transporte_memoria linea;
    morvane::Variables_grab v;
    morvane::frm_principal f;
    oraculo juez;
  };

  circunstancias sortear();
  void ejecutar(const std::function<void()>& que);
  void arrancar();
  void en_una_pasada();
  morvane::respuesta_caja contestar(const morvane::caja& mensaje);
  morvane::respuesta_caja elegir_respuesta(const morvane::caja& mensaje);
  gesto un_gesto();

  puente::azar azar_;
  cuenta& cuenta_;
  apoyo::carpeta dir_;
  morvane::archivos ficheros_;
  morvane::gemelo plat_;
  apoyo::placa_lejos lejos_;
  ficheros_al_azar firmware_;
  std::unique_ptr<programa> p_;

  /// One click in so many passes; 0 for none. How many are left.
  std::uint64_t nervios_ = 0, clics_ = 0;
  /// The pass of the operation at which the window is asked to close, or the program is killed; 0 for never.
  std::uint64_t cierra_en_ = 0, muere_en_ = 0, pasada_ = 0;
  int preguntas_ = 0;
  bool hay_que_arrancar_ = true;
  morvane::instante en_cajas_{0};
  std::string historia_, anterior_;
};

}  // namespace campana
