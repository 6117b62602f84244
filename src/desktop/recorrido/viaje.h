#pragma once

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <string>

#include "desktop/programa.h"
#include "testigo.h"

namespace morvane {

/// What every step of the tour works with. `directorio` is the program's, with samples, a board on COM1 and one on COM2
/// that never answers.
struct viaje {
  programa& p;
  testigo& t;
  std::filesystem::path directorio;

  /// A widget or action of the main window, by its name.
  template <class W>
  W& hijo(const char* nombre) const {
    auto* encontrado = p.ventana().findChild<W*>(QString::fromUtf8(nombre));
    if (encontrado == nullptr) throw std::runtime_error(std::string("no existe ") + nombre);
    return *encontrado;
  }
  std::filesystem::path muestra(const char* nombre) const { return directorio / "muestras" / nombre; }
};

/// The chapters; each is a step or a few that belong together, and says in the transcript what happens.
void arrancar(viaje& v);
void programar_sin_archivo(viaje& v);
void abrir_muestra(viaje& v);
void borrar(viaje& v);
void programar(viaje& v);
void verificar(viaje& v);
void leer_lo_programado(viaje& v);
void buscar_en_un_volcado(viaje& v);
void mirar_en_el_mapa(viaje& v);
void leer_un_rango(viaje& v);
void abrir_otro_archivo(viaje& v);
void detener(viaje& v);
void placa_muda(viaje& v);
void puerto_sin_nada(viaje& v);
void enchufar_placa_simulada(viaje& v);
void acerca_de(viaje& v);
void ayuda(viaje& v);
void cerrar(viaje& v);

}  // namespace morvane
