#pragma once

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "platform/pendiente.h"
#include "platform/plataforma.h"

namespace morvane {

/// Thrown by the twin where the real platform would end the program.
struct fin_de_programa {};

/// Thrown by the twin's pump when something waits for what can never come.
struct colgado : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// Thrown by the twin when a question comes up for which no answer stands ready.
struct caja_inesperada : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A host by script: what stands in its registry, which programs there are, and which were started.
class anfitrion_de_guion final : public anfitrion {
 public:
  std::optional<std::int32_t> RegOpenKeyExA(std::int32_t raiz, const std::string& nombre,
                                            std::uint32_t acceso) override;
  std::optional<valor_registro> RegQueryValueExA(std::int32_t clave, const std::string& nombre,
                                                 std::size_t cabida) override;
  void RegCloseKey(std::int32_t clave) override;
  bool existe(const std::string& ruta) override { return programas.contains(ruta); }
  bool iniciar(const std::string& ruta) override;
  std::vector<std::string> programas_de_informacion() override { return del_escritorio; }

  /// Values by key and name, both joined by a "|".
  std::map<std::string, valor_registro> valores;
  std::set<std::string> programas;
  std::vector<std::string> del_escritorio;
  std::vector<std::string> iniciados;
  int abiertas = 0;

 private:
  std::string clave_;
};

/// A platform by script, with a clock of its own. A pass in which nothing is due moves the clock to the next thing that
/// is: a running clock, a character on a watched line, an action of the script. Passes with nothing ever due throw
/// `colgado`, so nothing sleeps and nothing hangs.
class gemelo : public plataforma {
 public:
  instante ahora() const override { return ahora_; }
  std::string hora() const override;
  std::string ShowOpen(const CommonDialog& dialogo) override;
  [[noreturn]] void terminar() override;
  anfitrion_de_guion& maquina() override { return maquina_; }

  /// Answers for the boxes to come, first come first served. A box with OK alone needs none and takes none
  /// but `vbOK` and `vbNinguna`.
  void responder(respuesta_caja respuesta) { respuestas_.push_back({respuesta, {}}); }
  /// The same, after `mientras` has run with the box open.
  void responder(respuesta_caja respuesta, std::function<void()> mientras);
  /// Answers that no box has taken; none are left afterwards.
  std::size_t olvidar_respuestas() { return std::exchange(respuestas_, {}).size(); }
  /// Paths for the open dialogs to come; without one the dialog is cancelled.
  void elegir(std::string ruta) { rutas_.push_back(std::move(ruta)); }
  /// Answer the boxes and the open dialogs for which nothing stands ready, when set.
  std::function<respuesta_caja(const caja&)> usuario;
  std::function<std::string()> eleccion;
  /// Runs `accion` inside the first pass at or after `cuando`.
  void programar(instante cuando, std::function<void()> accion);
  /// Makes the clock stop at the moments at which something happens at `otro`, which must outlive this.
  void vigilar(const pendiente& otro) { vigilados_.push_back(&otro); }
  /// Lets time pass, as while a user thinks.
  void pasar(instante cuanto) { ahora_ += cuanto; }

  /// All boxes shown so far, in order.
  std::vector<caja> cajas;
  /// What stood under the text of each.
  std::vector<std::string> explicaciones;
  /// Passes so far, and how many of them in a row found nothing ever due before it counts as a hang.
  std::uint64_t pasadas = 0;
  int paciencia = 100;
  /// How long the user takes to answer each box.
  instante tiempo_de_caja{0};
  /// Called at the start of each pass, when set.
  std::function<void()> en_cada_pasada;

 protected:
  void eventos() override;
  respuesta_caja mostrar(const caja& mensaje, const std::string& explicacion) override;

 private:
  struct contestacion {
    respuesta_caja respuesta;
    std::function<void()> mientras;
  };
  std::optional<instante> proximo() const;
  bool algo_espera() const;
  bool ejecutar_acciones();

  anfitrion_de_guion maquina_;
  instante ahora_{0};
  std::deque<contestacion> respuestas_;
  std::deque<std::string> rutas_;
  std::multimap<instante, std::function<void()>> acciones_;
  std::vector<const pendiente*> vigilados_;
  int vacias_ = 0;
};

}  // namespace morvane
