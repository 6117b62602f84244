#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace morvane {

/// The folder of the program that is running; where the host tells it so, with the links in its path followed.
std::filesystem::path carpeta_del_programa();

/// True if files can be made and replaced in `carpeta`.
bool se_puede_escribir_en(const std::filesystem::path& carpeta);

/// Puts `texto` and a line end on standard error, if that can take it at once; else it is lost: whoever started the
/// program may have left a pipe there that nobody reads. Of a long text the beginning is put there.
void decir_por_errores(std::string texto);

/// The ways besides its windows in which a system asks a program to end: SIGTERM, SIGINT and SIGHUP where there are
/// signals, but for those that whoever started the program wants it to ignore. Windows has none of its own for a
/// program with windows.
class peticiones_de_fin {
 public:
  /// Holds them back from now on; to be made before any thread is. If that cannot be, they keep their usual effect.
  /// What is written to a pipe that nobody reads any more is an error from now on, and no reason to end.
  peticiones_de_fin();
  ~peticiones_de_fin();
  peticiones_de_fin(const peticiones_de_fin&) = delete;
  peticiones_de_fin& operator=(const peticiones_de_fin&) = delete;

  /// Calls `atender` for each, those included that came before, in a thread of its own, which ends with what this gives
  /// back. This must live longer. To be called once.
  [[nodiscard]] std::jthread escuchar(std::function<void()> atender) const;

 private:
  struct fuente;
  std::unique_ptr<fuente> fuente_;
};

}  // namespace morvane
