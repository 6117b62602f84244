#pragma once

#include "console/clave.h"
#include "imagenes.h"

namespace morvane::console {

/// The certificate that an order was asked for, from before the run to behind it.
class acta {
 public:
  /// Without one wanted nothing is done. Fails if there is no key to sign with, no place for the file, or something
  /// else than a certificate there. The run begins now.
  explicit acta(const llamada& ll);

  /// The chip is about to be another one: what an earlier certificate says at that place no longer holds, and is gone.
  void empezar() const;

  /// Writes it, if the order has ended well; what fails then becomes the end.
  void escribir(const imagen_leida& i, const trabajo_hecho& t, cierre& fin) const;

 private:
  const llamada& ll_;
  std::optional<clave> clave_;
  std::string principio_;
};

}  // namespace morvane::console
