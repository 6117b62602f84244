#pragma once

#include <string>
#include <vector>

#include "apoyo/placa_lejos.h"
#include "bridge/averias.h"
#include "ficheros.h"
#include "juez_mapa.h"
#include "shell/frm_principal.h"

namespace campana {

/// What one operation went through.
struct circunstancias {
  puente::alcance efecto;
  /// No fault of any kind, and nobody clicked meanwhile: whatever is said must be the plain truth.
  bool limpia = true;
  bool con_clics = false;
};

/// Knows what the chip holds and what went over the line, and judges each box of the program by it.
class oraculo {
 public:
  oraculo(morvane::frm_principal& f, const morvane::transporte_memoria& linea, const apoyo::placa_lejos& lejos,
          const ficheros_al_azar& ficheros, const apoyo::carpeta& dir);

  void empezar(const circunstancias& c);
  void juzgar(const morvane::caja& mensaje);
  void contar_pregunta(morvane::respuesta_caja respuesta);
  /// What must hold when an operation is over. `pasado`: its time without that of boxes.
  void terminar(morvane::instante pasado);
  /// Something else than the program has changed the chip.
  void chip_cambiado() { mapa_.chip_cambiado(); }

  std::vector<std::string> fallos;
  std::vector<std::string> dicho;

 private:
  bool borrada() const;
  bool grabada() const;
  bool leida() const;
  bool sumas_iguales() const;
  bool bytes_iguales() const;
  bool protegida() const;
  bool cargado() const;
  bool diario_igual(const std::vector<std::string>& palabras) const;
  std::vector<std::string> enviados(char letra) const;
  void exigir(bool bien, const std::string& que);

  morvane::frm_principal& f_;
  const morvane::transporte_memoria& linea_;
  const apoyo::placa_lejos& lejos_;
  const ficheros_al_azar& ficheros_;
  const apoyo::carpeta& dir_;
  juez_mapa mapa_;
  circunstancias c_;
  std::size_t desde_ = 0;
  int preguntas_ = 0, interrumpidas_ = 0, otras_ = 0;
  bool rechazo_ = false, estaba_protegida_ = false, sin_mirar_ = false;
};

}  // namespace campana
