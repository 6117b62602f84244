#pragma once

#include <string>

#include "console/traza.h"
#include "informe.h"

namespace morvane::console {

/// Hears what a job does, hands it to the face and the trace, and keeps the command that it came to before the closing.
class oyente final : public job::observador {
 public:
  /// `traza` may be null.
  oyente(informe& cara, console::traza* traza) : cara_(cara), traza_(traza) {}

  void empieza(job::fase cual, std::int64_t total) override;
  void avanza(std::int64_t hechos) override { cara_.avanza(hechos); }
  void ocurre(job::suceso que, std::string_view comando, std::int32_t direccion, char codigo) override;
  void traza(char direccion, std::string_view crudo, job::tiempo cuando) override;

  /// The first one that nothing came back for, else the last one; without its frame. Empty if none went out.
  const std::string& comando() const { return sin_respuesta_.empty() ? ultimo_ : sin_respuesta_; }

 private:
  informe& cara_;
  console::traza* traza_;
  bool cerrando_ = false;
  std::string ultimo_, sin_respuesta_;
};

}  // namespace morvane::console
