#pragma once

#include "platform/anfitrion.h"

namespace morvane {

/// A host without a registry, which has its programs along the search path.
class anfitrion_posix final : public anfitrion {
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
