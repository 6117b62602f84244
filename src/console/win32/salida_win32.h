#pragma once

#include <windows.h>

#include "console/exterior.h"

namespace morvane::console {

/// A file, a pipe, a console that text goes to, as UTF-8.
class salida_win32 final : public salida {
 public:
  /// `cual`: STD_OUTPUT_HANDLE or STD_ERROR_HANDLE.
  explicit salida_win32(DWORD cual);

  void escribir(std::string_view texto) override;
  bool fallida() const override { return fallida_; }

 private:
  HANDLE adonde_;
  bool fallida_ = false;
};

}  // namespace morvane::console
