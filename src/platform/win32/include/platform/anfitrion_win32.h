#pragma once

#include "platform/anfitrion.h"

namespace morvane {

/// A Windows host. A key is looked for where programs of 32 bits have theirs first, then where those of 64 bits do, and
/// opened for reading, whatever `acceso` asks for beyond that. Texts are UTF-8, also those that the registry gives.
class anfitrion_win32 final : public anfitrion {
 public:
  std::optional<std::int32_t> RegOpenKeyExA(std::int32_t raiz, const std::string& nombre,
                                            std::uint32_t acceso) override;
  std::optional<valor_registro> RegQueryValueExA(std::int32_t clave, const std::string& nombre,
                                                 std::size_t cabida) override;
  void RegCloseKey(std::int32_t clave) override;
  bool existe(const std::string& ruta) override;
  bool iniciar(const std::string& ruta) override;
  std::vector<std::string> programas_de_informacion() override;
};

}  // namespace morvane
