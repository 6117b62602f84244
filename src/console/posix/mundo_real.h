#pragma once

#include "job/entorno.h"
#include "senales.h"

namespace morvane::console {

/// The host's clock, and waits that a line or a signal ends.
class mundo_real final : public job::entorno {
 public:
  /// `paran` must outlive this.
  explicit mundo_real(senales& paran) : paran_(paran) {}

  job::tiempo ahora() override;
  void esperar(job::tiempo hasta_cuanto) override;
  void pausa(job::tiempo cuanto) override;
  int parada() override;

  /// What `esperar` waits on; -1 while no line is open.
  int linea = -1;

 private:
  senales& paran_;
};

}  // namespace morvane::console
