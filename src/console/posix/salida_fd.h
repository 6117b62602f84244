#pragma once

#include "console/exterior.h"
#include "senales.h"

namespace morvane::console {

/// A file, a pipe, a terminal that text goes to.
class salida_fd final : public salida {
 public:
  /// `fd` stays open and as it is. `paran` must outlive this.
  salida_fd(int fd, senales& paran);

  void escribir(std::string_view texto) override;
  bool lista() override;
  bool fallida() const override { return fallida_; }

 private:
  bool esperar();

  int fd_;
  senales& paran_;
  bool fallida_ = false;
};

}  // namespace morvane::console
