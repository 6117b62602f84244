#pragma once

#include "job/entorno.h"
#include "senales.h"
#include "serial/transporte_win32.h"

namespace morvane::console {

/// The host's clock, and waits that a line or a wish to stop ends.
class mundo_real final : public job::entorno {
 public:
  /// `paran` must outlive this.
  explicit mundo_real(const senales& paran) : paran_(paran) {}

  job::tiempo ahora() override;
  void esperar(job::tiempo hasta_cuanto) override;
  void pausa(job::tiempo cuanto) override;
  int parada() override { return paran_.nivel(); }

  /// What `esperar` waits on; null while no line is open.
  const transporte_win32* linea = nullptr;

 private:
  const senales& paran_;
};

}  // namespace morvane::console
