#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvane {

/// A value as a registry gives it: its type, the buffer that the query filled, and how many bytes it says to have.
struct valor_registro {
  std::uint32_t tipo = 0;
  std::vector<std::uint8_t> bytes;
  std::uint32_t tamano = 0;
};

/// What the host knows of itself: its registry, where it has one, and its programs.
class anfitrion {
 public:
  virtual ~anfitrion() = default;

  /// Opens the key `nombre` under `raiz` with the access mask `acceso`. Nothing if there is none.
  virtual std::optional<std::int32_t> RegOpenKeyExA(std::int32_t raiz, const std::string& nombre,
                                                    std::uint32_t acceso) = 0;
  /// Reads the value `nombre` of an open key into a buffer of `cabida` bytes, zeros behind what it holds. Nothing if
  /// there is no such value or it does not fit.
  virtual std::optional<valor_registro> RegQueryValueExA(std::int32_t clave, const std::string& nombre,
                                                         std::size_t cabida) = 0;
  virtual void RegCloseKey(std::int32_t clave) = 0;

  virtual bool existe(const std::string& ruta) = 0;
  /// Starts a program without waiting for it. False if it could not be started.
  virtual bool iniciar(const std::string& ruta) = 0;
  /// Programs of this desktop that show what the machine is, the likeliest first. Empty where only the registry knows.
  virtual std::vector<std::string> programas_de_informacion() = 0;
};

}  // namespace morvane
