#pragma once

#include <QProcess>
#include <filesystem>
#include <string>

#include "serial/puertos.h"
#include "serial/transporte.h"

namespace morvane {

/// The simulated board as one of the ports: a program beside this one, which lives no longer than this one. Which port
/// it is stays noted in the program's directory, and it is that one again when the program starts anew. A QApplication
/// must exist.
class placa_simulada {
 public:
  explicit placa_simulada(std::filesystem::path directorio);
  ~placa_simulada();
  placa_simulada(const placa_simulada&) = delete;
  placa_simulada& operator=(const placa_simulada&) = delete;

  /// The port that it is now, 1 to 9; 0 if none.
  int puerto() const;
  /// The lines of the program, this board among them; it stands behind a port of the system, so they are `lineas`.
  static transporte& entre(transporte& lineas) { return lineas; }
  /// The port `numero` (0 to 9), whether it is this board or not.
  descripcion_puerto describir(int numero) const { return describir_puerto(directorio_, numero); }

  /// Makes it the port `numero` (1 to 9), and no longer what it was before. Waits until it answers there, for up to 2
  /// s. Gives an empty text, or one Spanish line: why it is no port at all, or that it could not be noted.
  std::string poner(int numero);

  /// Ends it, if it runs; it does not come back by itself.
  void quitar();

  /// Makes it the port that is noted. If that cannot be, because something else is linked there by now, nothing
  /// happens.
  void reanudar();

 private:
  std::filesystem::path nota() const;
  std::string arrancar(int numero);
  void parar();

  const std::filesystem::path directorio_;
  QProcess proceso_;
  int puerto_ = 0;
};

}  // namespace morvane
