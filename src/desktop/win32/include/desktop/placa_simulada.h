#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "serial/puertos.h"
#include "serial/transporte.h"

namespace morvane {

/// The simulated board as one of the ports, inside of this program: there are no pseudo-terminals for it to stand
/// behind, and nobody has to install a driver for it. Which port it is stays noted in the program's directory, and it
/// is that one again when the program starts anew; so does what its chip holds.
class placa_simulada {
 public:
  explicit placa_simulada(std::filesystem::path directorio);
  ~placa_simulada();
  placa_simulada(const placa_simulada&) = delete;
  placa_simulada& operator=(const placa_simulada&) = delete;

  /// The port that it is now, 1 to 9; 0 if none.
  int puerto() const { return puerto_; }
  /// The lines of the program, this board among them: at its port it stands in front of what `lineas`, which must
  /// outlive them, has there. To be called once.
  transporte& entre(transporte& lineas);
  /// The port `numero` (0 to 9), whether it is this board or not.
  descripcion_puerto describir(int numero) const;

  /// Makes it the port `numero` (1 to 9), and no longer what it was before. Gives an empty text, or one Spanish line:
  /// why it is no port at all, or that it could not be noted.
  std::string poner(int numero);

  /// Takes it away; it does not come back by itself.
  void quitar();

  /// Makes it the port that is noted, if one is.
  void reanudar();

 private:
  class lineas_con_placa;
  class placa;
  std::filesystem::path nota() const;
  std::string arrancar(int numero);
  void parar();

  const std::filesystem::path directorio_;
  std::unique_ptr<placa> placa_;
  std::unique_ptr<lineas_con_placa> lineas_;
  int puerto_ = 0;
};

}  // namespace morvane
